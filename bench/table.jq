# A line of the table for each row, and for each floor of it; nanoseconds, and what is not there is "-".
.rows[]
| [.row, .own.median, .wall.median, .children.median] as $row
| (.floors[0] // { floor: "-", median: "-", by: "own" }) as $first
| ($row + [$first.floor, $first.median, $first.by]),
  (.floors[1:][] | ["", "-", "-", "-", .floor, .median, .by])
| @tsv
