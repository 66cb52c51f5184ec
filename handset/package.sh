#!/bin/bash
# package.sh IMAGE VERSION PACKAGE.deb: packs the image and its bundle filter for the handset. The same input gives the
# same bytes: every file has one fixed time and belongs to root.
set -euo pipefail
image=$1 version=$2 package=$3
export SOURCE_DATE_EPOCH=1704067200

tree=$(mktemp --directory)
trap 'rm -rf "$tree"' EXIT
libraries=$tree/Library/MobileSubstrate/DynamicLibraries
mkdir -p "$libraries" "$tree/DEBIAN"
install -m 755 "$image" "$libraries/QuorvelRR.dylib"
install -m 644 "$(dirname "$(readlink -f "$0")")/QuorvelRR.plist" "$libraries/QuorvelRR.plist"
cat >"$tree/DEBIAN/control" <<END
Package: com.velmarin.quorvelrr
Name: QuorvelRR
Version: $version
Architecture: iphoneos-arm
Section: Tweaks
Priority: optional
Depends: firmware (>= 7.0), com.velmarin.quorvel
Installed-Size: $(($(du --apparent-size --block-size=1024 --summarize "$libraries" | cut -f1)))
Maintainer: Velmarin <packages@velmarin.example>
Description: The Recents screen as a full call log
 Four filtered lists, search, deletion, call back, and the whole history of a contact.
END
chmod -R u=rwX,go=rX "$tree"
find "$tree" -exec touch --no-dereference --date="@$SOURCE_DATE_EPOCH" {} +
dpkg-deb --root-owner-group -Zgzip --build "$tree" "$package" >/dev/null
