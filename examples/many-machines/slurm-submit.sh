#!/usr/bin/env bash
# Gives a population to Slurm: an array of shards, and a merge that waits for all of them. Prints
# the number of the merge's job. Options behind FOLDER go to sbatch, such as --cpus-per-task=16.
#
#   slurm-submit.sh SCRIPT.bet GAMES ROLLS SEED SHARDS FOLDER [OPTION OF SBATCH]...
#
# FOLDER lies where all nodes see it. Submit the same again after whatever went wrong: finished
# shards end at once, and others go on where they were.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
export SCRIPT=$1 GAMES=$2 ROLLS=$3 SEED=$4 FOLDER=$6
shards=$5
shift 6
mkdir -p "$FOLDER"

array=$(sbatch --parsable --array="0-$((shards - 1))" --chdir="$FOLDER" "$@" "$here/shard.sbatch")
sbatch --parsable --dependency="afterok:$array" --kill-on-invalid-dep=yes --chdir="$FOLDER" \
  --export="ALL,SHARDS=$shards" "$here/merge.sbatch"
