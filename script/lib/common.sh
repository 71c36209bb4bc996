# What every script of this folder needs: where things are, and how to speak. Sourced, never run.

set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
cache=${QUILLON_CACHE:-${HOME:-/root}/.cache/quillon}

# Headlines go to stderr, so that stdout stays what a command was asked for.
Say() { printf '== %s\n' "$*" >&2; }
Fail() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
  exit 1
}

# Runs a long-winded command; what it says is shown only when it fails.
Quietly() {
  local output status=0
  output=$(mktemp)
  "$@" >"$output" 2>&1 </dev/null || status=$?
  ((status == 0)) || cat "$output" >&2
  rm -f "$output"
  return "$status"
}

# Runs a command as the administrator where that is possible without a question.
AsRoot() {
  if ((EUID == 0)); then "$@"; else sudo -n "$@"; fi
}

# An unprivileged container, say, does not.
AllowsPrivateNamespaces() { unshare --mount --net --pid --fork true 2>/dev/null; }
