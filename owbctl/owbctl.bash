# bash completion of owbctl, whose words come from the program itself.
_owbctl() {
    local line=${COMP_LINE:0:COMP_POINT} words
    read -ra words <<<"$line"
    [[ $line != *[[:space:]] ]] || words+=("")
    mapfile -t COMPREPLY < <("${1/#\~/$HOME}" complete "${words[@]:1}" 2>/dev/null)
    # bash puts a reply in place of what stands behind the last : or = of the word.
    local current=${words[-1]}
    COMPREPLY=("${COMPREPLY[@]#"${current%"${current##*[=:]}"}"}")
    # A property is followed by its value.
    [[ ${#COMPREPLY[@]} -ne 1 || ${COMPREPLY[0]} != *= ]] || compopt -o nospace
}
complete -o default -F _owbctl owbctl
