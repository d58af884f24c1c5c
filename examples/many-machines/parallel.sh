#!/usr/bin/env bash
# Plays a population in shards under GNU parallel and merges them. Run the same command again after
# whatever went wrong: finished shards are kept, a shard that was cut off goes on where it was.
#
#   parallel.sh SCRIPT.bet GAMES ROLLS SEED SHARDS FOLDER [OPTION OF PARALLEL]...
#
# On several machines that share FOLDER and have kelvanor-batch, name them to parallel:
#
#   parallel.sh my.bet 1000000 500 7 64 "$PWD/run" --sshlogin 16/one,16/two --workdir .
set -euo pipefail
script=$1 games=$2 rolls=$3 seed=$4 shards=$5 folder=$6
shift 6
mkdir -p "$folder"

# As many shards at a time as there are cores, one process each.
seq 0 $((shards - 1)) |
  parallel --halt now,fail=1 --retries 2 --joblog "$folder/joblog" --resume-failed "$@" \
    kelvanor-batch play --script "$script" --games "$games" --rolls "$rolls" --seed "$seed" \
    --shard "{}/$shards" --jobs 1 --resume --out "$folder/shard-{}.glg"

parts=()
for ((shard = 0; shard < shards; shard++)); do parts+=("$folder/shard-$shard.glg"); done
kelvanor-batch merge --force "$folder/population.glg" "${parts[@]}"
