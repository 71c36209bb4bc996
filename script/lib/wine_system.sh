# A Wine that runs 32-bit programs, without touching the machine: where the machine's own wine cannot, a small
# i386 system in a folder of the cache. Sourced by script/bootstrap; rig/wine.py uses what it makes.

wineSystem=$cache/i386-system
winePrefix=$cache/wine-prefix

# A host wine counts only if it has its 32-bit half: the 64-bit half alone starts, and then fails.
HostWineRuns32Bit() {
  command -v wine >/dev/null && compgen -G '/usr/lib/i386-linux-gnu/wine/i386-unix/ntdll.so' >/dev/null
}

# Makes the i386 system under another name first, so that an interrupted run leaves nothing that looks complete.
MakeWineSystem() {
  [[ ! -d $wineSystem ]] || return 0
  local suite mirror making=$wineSystem.making
  suite=$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)
  mirror=$(MachineMirror "$suite")
  [[ -n $mirror ]] || Fail "the package sources of this machine name no main archive of $suite"
  Say "Making the i386 system for Wine in $wineSystem"
  rm -rf "$making"
  mkdir -p "$making"
  # A private mount namespace: whatever gets mounted below the folder is gone when this ends, however it ends.
  Quietly unshare --mount "${BASH_SOURCE[0]%/*}/make_wine_system" "$making" "$suite" "$mirror"
  mv -T "$making" "$wineSystem"
}

# Making a prefix takes some twenty seconds, so one is made here, and each copy of a program mounts a layer over it.
MakeWinePrefix() {
  [[ ! -d $winePrefix ]] || return 0
  local making=$winePrefix.making
  Say "Making the Wine prefix in $winePrefix"
  rm -rf "$making"
  mkdir -p "$making"
  Quietly /usr/bin/python3 "$root/rig/make_prefix.py" "$making"
  mv -T "$making" "$winePrefix"
}
