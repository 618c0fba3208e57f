# bash completion of owbctl. The program prints the candidates.
_owbctl() {
    local line=${COMP_LINE:0:COMP_POINT} words
    read -ra words <<<"$line"
    [[ $line != *[[:space:]] ]] || words+=("")
    mapfile -t COMPREPLY < <("${1/#\~/$HOME}" complete "${words[@]:1}" 2>/dev/null)
    # bash replaces only the part of the word after the last : or =.
    local current=${words[-1]}
    COMPREPLY=("${COMPREPLY[@]#"${current%"${current##*[=:]}"}"}")
    # A value follows the = of a property.
    [[ ${#COMPREPLY[@]} -ne 1 || ${COMPREPLY[0]} != *= ]] || compopt -o nospace
}
complete -o default -F _owbctl owbctl
