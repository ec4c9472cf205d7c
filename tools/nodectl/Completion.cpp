#include "Completion.h"

#include "Output.h"

namespace nodectl {

namespace {

constexpr const char* bashScript = R"(_nodectl() {
    mapfile -t COMPREPLY < <("${COMP_WORDS[0]}" complete "${COMP_WORDS[@]:1:COMP_CWORD}" 2>/dev/null)
}
complete -o default -F _nodectl nodectl)";

constexpr const char* zshScript = R"(_nodectl() {
    local -a candidates
    candidates=("${(@f)$(${words[1]} complete "${(@)words[2,CURRENT]}" 2>/dev/null)}")
    [[ -n $candidates ]] && compadd -a candidates || _files
}
compdef _nodectl nodectl)";

} // namespace

void completion(const Options& options)
{
    print(options.shell == "zsh" ? zshScript : bashScript);
}

} // namespace nodectl
