# The companions for Linux as a Debian package. Sourced by script/package, which knows the version.

toolsPackage=quillon-tools_${version}_$(dpkg --print-architecture).deb

# The build id is a hash of the debug information too, and so depends on the folder.
InstallProgram() {
  install -D -m 755 "build/native/tools/$1" "$tree/usr/bin/${1##*/}"
  strip --strip-all --remove-section=.note.gnu.build-id "$tree/usr/bin/${1##*/}"
}

InstallManual() {
  install -D -m 644 "tools/$1" "$tree/usr/share/man/man1/${1##*/}"
  gzip -9n "$tree/usr/share/man/man1/${1##*/}"
}

# The dependencies of the programs, from the packages of their libraries.
LibraryPackages() {
  touch "$making/debian/control"
  (cd "$making" && dpkg-shlibdeps -O debian/quillon-tools/usr/bin/* | sed -n 's/^shlibs:Depends=//p')
}

WriteControl() {
  local libraries size
  mkdir -p "$tree/DEBIAN"
  libraries=$(LibraryPackages)
  size=$(du -sk "$tree/usr" | cut -f 1)
  cat >"$tree/DEBIAN/control" <<END
Package: quillon-tools
Version: $version
Architecture: $(dpkg --print-architecture)
Maintainer: Vextant <support@vextant.example>
Installed-Size: $size
Depends: $libraries
Suggests: mosquitto, tshark
Section: net
Priority: optional
Description: companions of the messenger Quillon
 quillon-cli alerts people from scripts, lists who is on a segment and
 diagnoses faults of the network. quillon-relay joins segments through an MQTT
 broker. Wireshark and tshark show the packets by name.
END
  echo /etc/default/quillon-relay >"$tree/DEBIAN/conffiles"
}

MakeToolsPackage() {
  local tree=$making/debian/quillon-tools
  script/build --target companions native
  InstallProgram cli/quillon-cli
  InstallProgram relay/quillon-relay
  InstallManual cli/quillon-cli.1
  InstallManual relay/quillon-relay.1
  install -D -m 644 tools/cli/quillon-cli.bash "$tree/usr/share/bash-completion/completions/quillon-cli"
  install -D -m 644 tools/relay/quillon-relay.service "$tree/usr/lib/systemd/system/quillon-relay.service"
  install -D -m 644 tools/relay/quillon-relay.default "$tree/etc/default/quillon-relay"
  install -D -m 644 tools/wireshark/quillon.lua "$tree/usr/lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)/wireshark/plugins/quillon.lua"
  install -D -m 644 LICENSE "$tree/usr/share/doc/quillon-tools/copyright"
  WriteControl
  Quietly dpkg-deb --root-owner-group --build "$tree" "$making/$toolsPackage"
  rm -r "$making/debian"
}
