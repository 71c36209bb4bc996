# Paths and output functions of all scripts in this folder. To be sourced.

set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
cache=${QUILLON_CACHE:-${HOME:-/root}/.cache/quillon}

# Headlines go to stderr, so that stdout has results only.
Say() { printf '== %s\n' "$*" >&2; }
Fail() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
  exit 1
}

# Runs a command and shows its output only when it fails.
Quietly() {
  local output status=0
  output=$(mktemp)
  ("$@") >"$output" 2>&1 </dev/null || status=$?  # a Fail in it ends it alone
  ((status == 0)) || cat "$output" >&2
  rm -f "$output"
  return "$status"
}

# Runs a command as root, if that is possible without a prompt.
AsRoot() {
  if ((EUID == 0)); then "$@"; else sudo -n "$@"; fi
}

# An unprivileged container does not, for instance.
AllowsPrivateNamespaces() { unshare --mount --net --pid --fork true 2>/dev/null; }
