# The required Debian packages, and their installation. Sourced by script/bootstrap.

nativePackages=(cmake ninja-build g++ clang clang-format clang-tidy llvm
  googletest libgtest-dev libgmock-dev libbenchmark-dev python3 libcli11-dev nlohmann-json3-dev libmosquitto-dev)
# GoogleTest comes as source too, to be built for Windows by its users; and so do the header-only libraries of quillon-cli.
windowsPackages=(cmake ninja-build g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix googletest
  libcli11-dev nlohmann-json3-dev)
rigPackages=(debootstrap iproute2 util-linux python3 xvfb openbox trayer xdotool x11-utils imagemagick
  unrtf tshark mosquitto mosquitto-clients openssl)
packagePackages=(nsis openssl osslsigncode python3 dpkg-dev)

# The run-time library of the sanitizers and the fuzzer is in a package named after the version of clang.
ClangRuntimePackage() {
  local version
  version=$(clang -dumpversion 2>/dev/null || apt-cache depends clang 2>/dev/null | sed -n 's/^ *Depends: clang-//p')
  [[ -z $version ]] || echo "libclang-rt-${version%%.*}-dev"
}

# Prints the given packages that are not installed.
MissingPackages() {
  local installed package
  installed=$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "$@" 2>/dev/null || true)
  for package in $(printf '%s\n' "$@" | sort -u); do
    grep -qx "$package installed" <<<"$installed" || echo "$package"
  done
}

# Installs missing packages; without network access when none is missing.
InstallPackages() {
  local missing
  mapfile -t missing < <(MissingPackages "$@")
  ((${#missing[@]})) || return 0
  Say "Installing ${missing[*]}"
  AptGet update || Say "Some package lists could not be fetched; trying with the others"
  AptGet install -y --no-install-recommends "${missing[@]}"
}

AptGet() {
  Quietly AsRoot env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=600 -o Acquire::Retries=3 "$@"
}

# Prints the mirror of the main suite in the machine's own package sources.
MachineMirror() {
  local suite=$1
  apt-get indextargets --format '$(RELEASE) $(COMPONENT) $(REPO_URI)' 'Created-By: Packages' |
    sed -n "s/^$suite main //p" | sed -n 1p
}
