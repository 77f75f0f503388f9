# shellcheck shell=sh disable=SC2154
# For commands that stand in front of one of Samba's own of the same name; read with ".".

# The one of Samba's: the first on the search path that does not lie beside this file.
stock_command() {
  (
    IFS=:
    for folder in $PATH; do
      if [ -x "$folder/$1" ] && [ "$(dirname "$(readlink -f "$folder/$1")")" != "$here" ]; then
        echo "$folder/$1"
        exit
      fi
    done
    echo "$1: winbind is not installed" >&2
    exit 127
  )
}
