# The results of a run for the lines of all its rounds. A quotient is made of the two rows of one round, which the machine's
# other work meets alike. Of the rounds, the median and the quartiles around it stay, which are the noise; all times are
# nanoseconds.
def middle: sort | .[length / 2 | floor];
def spread: sort | (length / 4 | floor) as $out | { median: middle, low: .[$out], high: .[length - 1 - $out] };

def quotient($by; $a; $b):
  { by: $by, floor: $b.row } + ([$a[$by], $b[$by]] | transpose | map(.[0] / .[1]) | spread);

def rounds:
  { row: .[0].row, floors: .[0].floors, resident: (map(.resident // empty) | middle) }
  + { own: map(.own | middle), wall: map(.wall | middle), children: map(.children | middle) };

. as $lines
| (map(.row) | to_entries | unique_by(.value) | sort_by(.key) | map(.value)) as $names
| [$names[] as $name | [$lines[] | select(.row == $name)] | rounds] as $rows
| ($rows | INDEX(.row)) as $all
| [$rows[] | . as $row
  | .floors |= [split(" ")[] | capture("^(?<by>[^:]*):(?<floor>.*)$") | . as $over
      | $all[.floor] // empty | quotient($over.by; $row; .)]
  | .own |= spread | .wall |= spread | .children |= spread]
| { machine: $machine, commit: $commit, sizeof_smb_share: $record, rows: . }
