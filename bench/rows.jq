# The lines of bench/processes for what the benchmark library says.
[.benchmarks[] | select(.run_type == "iteration")]
| group_by(.family_index)[]
| {
    row: .[0].run_name,
    floors: (.[0].label // ""),
    own: map(.cpu_time),
    wall: map(.real_time),
    children: map(.children),
    resident: .[0].resident
  }
