# A Wine that runs 32-bit programs, without touching the machine: where the machine's own wine cannot, a small
# i386 system in a folder of the cache. Sourced by script/bootstrap; rig/wine.py uses what it makes.

wineSystem=$cache/i386-system
winePrefix=$cache/wine-prefix

# The host's wine is used only with 32-bit support: without it, it starts and then fails.
HostWineRuns32Bit() {
  command -v wine >/dev/null && compgen -G '/usr/lib/i386-linux-gnu/wine/i386-unix/ntdll.so' >/dev/null
}

# Creates the i386 system under a temporary name, so that an interrupted run leaves nothing that looks complete.
MakeWineSystem() {
  [[ ! -d $wineSystem ]] || return 0
  local suite mirror making=$wineSystem.making
  suite=$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)
  mirror=$(MachineMirror "$suite")
  [[ -n $mirror ]] || Fail "the package sources of this machine name no main archive of $suite"
  Say "Making the i386 system for Wine in $wineSystem"
  rm -rf "$making"
  mkdir -p "$making"
  # In a private mount namespace, so that all mounts below the folder are gone at the end, whatever happens.
  Quietly unshare --mount "${BASH_SOURCE[0]%/*}/make_wine_system" "$making" "$suite" "$mirror"
  mv -T "$making" "$wineSystem"
}

# A prefix takes some twenty seconds to create, so there is one template, and each copy mounts an overlay on it.
MakeWinePrefix() {
  [[ ! -d $winePrefix ]] || return 0
  local making=$winePrefix.making
  Say "Making the Wine prefix in $winePrefix"
  rm -rf "$making"
  mkdir -p "$making"
  Quietly /usr/bin/python3 "$root/rig/make_prefix.py" "$making"
  mv -T "$making" "$winePrefix"
}
