#!/bin/bash
# Fuzzes every target of Tests/Fuzz in turn, or those named:
#
#   Tools/fuzz.sh MINUTES [TARGET...]   each target that long, 10 million executions at most
#   Tools/fuzz.sh pack [TARGET...]      writes the interesting inputs to the committed corpora
#
# Interesting inputs are kept in build/fuzz/corpus, findings in build/fuzz/findings. Fuzzing starts with the
# corpora in Tests/Data/Fuzz and the cases of the tests. The last lines give, for each target, the executions,
# edges covered and findings.
set -eu
cd "$(dirname "$0")/.."
. Tools/packages.sh

[ $# -gt 0 ] || { sed -n '2,10s/^# \?//p' "$0"; exit 2; }
task=$1
shift
if [ $# -gt 0 ]; then targets=$*; else
  targets=$(cd Tests/Fuzz && ls Fuzz?*.cpp | sed 's/^Fuzz//; s/\.cpp$//')
fi
corpus=build/fuzz/corpus
mkdir -p build/fuzz/findings build/logs

if [ "$task" = pack ]; then
  for target in $targets; do
    rm -rf "$corpus.small"
    mkdir "$corpus.small"
    "build/fuzz/bin/Fuzz$target" -merge=1 -max_len=256 "$corpus.small" "$corpus/$target" 2>/dev/null
    Tools/fuzz-corpus.py pack "$target" "$corpus.small"
  done
  exit
fi

install_packages $BUILD_PACKAGES $FUZZ_PACKAGES
cmake --preset fuzz
cmake --build --preset fuzz
# Short stack traces and a small quarantine of freed memory make the sanitizer faster. The fuzzer's entropic
# schedule would take a third of the time.
export ASAN_OPTIONS=malloc_context_size=3:quarantine_size_mb=32
summary=""
for target in $targets; do
  log=build/logs/fuzz-$target.log
  Tools/fuzz-corpus.py unpack "$target" "$corpus/$target"
  dictionary=Tests/Fuzz/Dictionaries/$target.dict
  options=""
  [ ! -f "$dictionary" ] || options="-dict=$dictionary"
  echo "== $target"
  "build/fuzz/bin/Fuzz$target" -runs=10000000 "-max_total_time=$((task * 60))" -max_len=1024 -timeout=20 -entropic=0 \
    -artifact_prefix="build/fuzz/findings/$target-" $options "$corpus/$target" >"$log" 2>&1 || true
  last=$(grep -E '^#[0-9]+' "$log" | tail -n 1)
  findings=$(find build/fuzz/findings -name "$target-*" | wc -l)
  executions=$(echo "$last" | sed -E 's/^#([0-9]+).*/\1/')
  edges=$(echo "$last" | sed -E 's/.*cov: ([0-9]+).*/\1/')
  summary+="$target: $executions executions, $edges edges, $findings findings"$'\n'
done
printf '%s' "$summary"
[ -z "$(ls build/fuzz/findings)" ]
