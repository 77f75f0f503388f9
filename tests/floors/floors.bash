# shellcheck shell=bash
# The floors of the library, from the ground up, the folders of one floor on one line. Code of a folder calls and includes
# what lies on lower floors or in the folder itself, nothing else.
floors() {
  cat <<'END'
base
model
volume acl support
catalogue
dfs special
smbconf
ads
END
}

# The folders with the numbers of their floors.
numbered_folders() {
  floors | awk '{ for (i = 1; i <= NF; ++i) print $i, NR }'
}

# upward_uses: reads lines "FOLDER USED-FOLDER HOW" and prints those in which the used folder is another one and lies no
# lower, or is none of the library's. Fails when there is one, and when nothing is read.
upward_uses() {
  awk '
    NR == FNR { floor[$1] = $2; next }
    NF < 3 { next }
    { ++uses }
    $1 != $2 && !($1 in floor && $2 in floor && floor[$2] < floor[$1]) {
      print $1 " uses " $2 ": " substr($0, length($1 " " $2 " ") + 1)
      ++upward
    }
    END { exit uses == 0 || upward > 0 }
  ' <(numbered_folders) -
}
