# SPDX-License-Identifier: MIT
# Completes zt in bash. Made by: zt completion bash. Use: source zt.bash
_zt() {
  local current=${COMP_WORDS[COMP_CWORD]} words=
  COMPREPLY=()
  case $COMP_CWORD in
    1) words="where profile crypt tree path file text round process completion help --help --version" ;;
    2)
      case ${COMP_WORDS[1]} in
        where) words="settings data language set-language load-language languages --help" ;;
        profile) words="get-string get-int get-uint get-word get-double get-float set-string set-int set-uint set-word set-double set-float remove text --help" ;;
        crypt) words="encrypt decrypt short store load --help" ;;
        tree) words="delete prune copy --help" ;;
        path) words="drive dir name ext folder file set-drive set-dir set-name set-ext set-file set-folder add-dir add-name add-index --help" ;;
        file) words="exists size time has-ext wait create delete rename copy compare read write check-write version free-space --help" ;;
        text) words="to-hex from-hex to-utf8 from-utf8 to-ansi utf8-to-ansi ansi-to-utf8 latin-to-ansi from-latin --help" ;;
        round) words="int uint double --help" ;;
        process) words="count end post --help" ;;
        completion) words="bash powershell --help" ;;
      esac
      ;;
    *)
      # Anything but an option is a file name or a text.
      [[ $current == -* ]] || return 0
      case "${COMP_WORDS[1]} ${COMP_WORDS[2]}" in
        "where settings") words="--help --json --quiet" ;;
        "where data") words="--help --json --quiet" ;;
        "where language") words="--help --json --quiet" ;;
        "where set-language") words="--help --json --quiet" ;;
        "where load-language") words="--help --json --quiet" ;;
        "where languages") words="--help --json --quiet" ;;
        "profile get-string") words="--help --json --quiet" ;;
        "profile get-int") words="--help --json --quiet" ;;
        "profile get-uint") words="--help --json --quiet" ;;
        "profile get-word") words="--help --json --quiet" ;;
        "profile get-double") words="--help --json --quiet" ;;
        "profile get-float") words="--help --json --quiet" ;;
        "profile set-string") words="--help --json --quiet" ;;
        "profile set-int") words="--help --json --quiet" ;;
        "profile set-uint") words="--help --json --quiet" ;;
        "profile set-word") words="--help --json --quiet" ;;
        "profile set-double") words="--help --json --quiet" ;;
        "profile set-float") words="--help --json --quiet" ;;
        "profile remove") words="--help --json --quiet" ;;
        "profile text") words="--overwrite --help --json --quiet" ;;
        "crypt encrypt") words="--utf8 --help --json --quiet" ;;
        "crypt decrypt") words="--utf8 --help --json --quiet" ;;
        "crypt short") words="--help --json --quiet" ;;
        "crypt store") words="--utf8 --help --json --quiet" ;;
        "crypt load") words="--utf8 --help --json --quiet" ;;
        "tree delete") words="--dry-run --yes --force --help --json --quiet" ;;
        "tree prune") words="--dry-run --yes --force --help --json --quiet" ;;
        "tree copy") words="--dry-run --yes --force --help --json --quiet" ;;
        "path drive") words="--help --json --quiet" ;;
        "path dir") words="--help --json --quiet" ;;
        "path name") words="--help --json --quiet" ;;
        "path ext") words="--help --json --quiet" ;;
        "path folder") words="--help --json --quiet" ;;
        "path file") words="--help --json --quiet" ;;
        "path set-drive") words="--help --json --quiet" ;;
        "path set-dir") words="--help --json --quiet" ;;
        "path set-name") words="--help --json --quiet" ;;
        "path set-ext") words="--help --json --quiet" ;;
        "path set-file") words="--help --json --quiet" ;;
        "path set-folder") words="--help --json --quiet" ;;
        "path add-dir") words="--help --json --quiet" ;;
        "path add-name") words="--help --json --quiet" ;;
        "path add-index") words="--help --json --quiet" ;;
        "file exists") words="--help --json --quiet" ;;
        "file size") words="--help --json --quiet" ;;
        "file time") words="--help --json --quiet" ;;
        "file has-ext") words="--help --json --quiet" ;;
        "file wait") words="--help --json --quiet" ;;
        "file create") words="--help --json --quiet" ;;
        "file delete") words="--help --json --quiet" ;;
        "file rename") words="--overwrite --help --json --quiet" ;;
        "file copy") words="--overwrite --help --json --quiet" ;;
        "file compare") words="--help --json --quiet" ;;
        "file read") words="--help --json --quiet" ;;
        "file write") words="--overwrite --help --json --quiet" ;;
        "file check-write") words="--help --json --quiet" ;;
        "file version") words="--help --json --quiet" ;;
        "file free-space") words="--help --json --quiet" ;;
        "text to-hex") words="--help --json --quiet" ;;
        "text from-hex") words="--help --json --quiet" ;;
        "text to-utf8") words="--help --json --quiet" ;;
        "text from-utf8") words="--help --json --quiet" ;;
        "text to-ansi") words="--help --json --quiet" ;;
        "text utf8-to-ansi") words="--help --json --quiet" ;;
        "text ansi-to-utf8") words="--help --json --quiet" ;;
        "text latin-to-ansi") words="--help --json --quiet" ;;
        "text from-latin") words="--help --json --quiet" ;;
        "round int") words="--help --json --quiet" ;;
        "round uint") words="--help --json --quiet" ;;
        "round double") words="--help --json --quiet" ;;
        "process count") words="--help --json --quiet" ;;
        "process end") words="--help --json --quiet" ;;
        "process post") words="--help --json --quiet" ;;
        "completion bash") words="--help --json --quiet" ;;
        "completion powershell") words="--help --json --quiet" ;;
      esac
      ;;
  esac
  COMPREPLY=($(compgen -W "$words" -- "$current"))
}
complete -o default -F _zt zt zt.exe
