# bash completion of owbctl, whose words come from the program itself.
_owbctl() {
    mapfile -t COMPREPLY < <("$1" complete "${COMP_WORDS[@]:1:COMP_CWORD}" 2>/dev/null)
    # A property is followed by its value.
    [[ ${#COMPREPLY[@]} -ne 1 || ${COMPREPLY[0]} != *= ]] || compopt -o nospace
}
complete -o default -F _owbctl owbctl
