# Turns the generated smb.conf into the file that stock smbd reads: section names without the blanks around
# them, no option named in the file "unknown", no yes-or-no option without either (one makes Samba refuse the
# whole file), no backslash at the end of a line (it would join the next one), accounts in the file that "smb
# passwd file" names, and no shares but the catalogue's.

BEGIN {
  while (unknown != "" && (getline option < unknown) > 0)
    left_out[option] = 1
  yes_or_no["browseable"] = yes_or_no["public"] = yes_or_no["oplocks"] = yes_or_no["map archive"] = 1
}

/^\[ .* \]$/ {
  name = substr($0, 3, length($0) - 4)
  print "[" name "]"
  if (name == "global")
    print "passdb backend = smbpasswd\nusershare max shares = 0"
  next
}

{
  option = $0
  sub(/[ \t]*=.*/, "", option)
  value = substr($0, index($0, "=") + 1)
  if (option in left_out || (option in yes_or_no && value !~ /^ (yes|no)$/))
    next
  sub(/[ \t]*\\[ \t\\]*$/, "")
  print
}
