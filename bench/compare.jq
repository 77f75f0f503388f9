# What got slower or faster since $old by more than the noise: quotients whose ranges do not meet.
def quotients: [.rows[] | .row as $row | .floors[] | . + { row: $row }];
def digits: . * 100 | round / 100;

($old[0] | quotients | INDEX("\(.row) \(.by) \(.floor)")) as $before
| [quotients[] | . + { before: $before["\(.row) \(.by) \(.floor)"] } | select(.before)]
| [.[] | select(.low > .before.high) | . + { change: "slower" }] as $slower
| [.[] | select(.high < .before.low) | . + { change: "faster" }] as $faster
| (($slower + $faster)[]
    | "\(.change): \(.row), from \(.before.median | digits) to \(.median | digits) times \(.floor)"),
  "\(length) quotients compared, \($slower + $faster | length) of them changed by more than the noise"
