# Turns the generated smb.conf into the file that stock smbd reads: section names without the blanks around
# them, no option named in the file "unknown", no yes-or-no option without either (one makes Samba refuse the
# whole file), no backslash at the end of a line (it would join the next one), accounts in the file that "smb
# passwd file" names, and no shares but the catalogue's, and of these none for whose path Samba would serve
# another folder. The second pass, which has a file "unknown", tells of these on standard error.

BEGIN {
  while (unknown != "" && (getline option < unknown) > 0)
    left_out[option] = 1
  yes_or_no["browseable"] = yes_or_no["public"] = yes_or_no["oplocks"] = yes_or_no["map archive"] = 1
}

# The lines of a section are held until all of them are known.
function keep(line) {
  held[++held_lines] = line
}

function end_section(   i) {
  for (i = 1; i <= held_lines && !serves_another; i++)
    print held[i]
  if (serves_another && unknown != "")
    print command ": the share \"" name "\" is left out: Samba would serve another folder" | "cat >&2"
  held_lines = serves_another = 0
}

/^\[ .* \]$/ {
  end_section()
  name = substr($0, 3, length($0) - 4)
  keep("[" name "]")
  if (name == "global")
    keep("passdb backend = smbpasswd\nusershare max shares = 0")
  next
}

{
  option = $0
  sub(/[ \t]*=.*/, "", option)
  value = substr($0, index($0, "=") + 1)
  if (option in left_out || (option in yes_or_no && value !~ /^ (yes|no)$/))
    next
  # Samba drops blanks and double quotes at the end of a value.
  if (option == "path" && value ~ /[ \t\v\f\r"\\]$/)
    serves_another = 1
  sub(/[ \t]*\\[ \t\\]*$/, "")
  keep($0)
}

END {
  end_section()
}
