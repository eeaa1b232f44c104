#!/bin/sh
# Runs the example on the files in Examples/Data and compares its output with the files in
# Examples/Data/Expected: check-example.sh [EMULATOR] PROGRAM
set -u

data=$(cd "$(dirname "$0")/.." && pwd)/Examples/Data
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

# check NAME COMMAND...: a case that passes if the command succeeds.
check() {
  name=$1
  shift
  if "$@" >"$work/details" 2>&1; then
    echo "[       OK ] Example.$name (0 ms)"
  else
    cat "$work/details"
    echo "[  FAILED  ] Example.$name (0 ms)"
    failures=$((failures + 1))
  fi
}

# Windows programs write CR LF to standard output.
as_text() { tr -d '\r'; }

# converts NAME EXPECTED OPTIONS...: the output and the summary equal the stored ones.
converts() {
  csv=$data/$1.csv expected=$data/Expected/$2
  shift 2
  run "$@" --preview 2 --output "$work/out" "$csv" 2>"$work/summary" &&
    cmp "$work/out" "$expected" &&
    as_text <"$work/summary" | diff - "$expected.summary"
}

# The first lines of a file, through standard input and output.
streams() {
  head -n 101 "$data/airports.csv" | run --format csv 2>"$work/summary" | as_text >"$work/out"
  echo >>"$work/out" # the text has no final line break
  head -n 101 "$data/Expected/airports.csv" | diff - "$work/out"
}

# A hundred valid lines, and one with a value too many.
survey() {
  echo "name;length"
  i=0
  while [ $i -lt 100 ]; do
    echo "road $i;$i.5"
    i=$((i + 1))
  done
  echo "road 100;100.5;gravel"
}

message="Csv file does not have consistent usage of column separator between lines!, Columns 2 vs Values 3 at line 101"

# By default a bad line is an error: the library's message, exit code 1, no output.
refuses() {
  survey | run >"$work/out" 2>"$work/summary"
  [ $? -eq 1 ] && [ ! -s "$work/out" ] && as_text <"$work/summary" | grep -Fx "$message"
}

# keeps MODE ROWS: the bad line is reported, and skipped or kept as a row.
keeps() {
  survey | run --bad-lines "$1" 2>"$work/summary" >"$work/out" &&
    as_text <"$work/summary" | grep -x "$2 rows, 2 columns, 1 problem lines" &&
    as_text <"$work/summary" | grep -Fx "  $message"
}

separates() {
  survey | run --separator "|" 2>"$work/summary" >"$work/out" &&
    as_text <"$work/summary" | grep -x "101 rows, 1 columns, 0 problem lines"
}

run() { $program "$@"; }

program=$*
check WeatherToJson converts seattle-weather seattle-weather.json
check AirportsToCsv converts airports airports.csv --format csv
check StandardStreams streams
check BadLinesFail refuses
check BadLinesAreSkipped keeps skip 100
check BadLinesAreKept keeps keep 101
check GivenSeparator separates
[ "$failures" -eq 0 ]
