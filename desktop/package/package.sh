#!/bin/bash
# package.sh SOURCE BUILD VERSION FILE.deb: packs what the build tree holds as a Debian package: the Phone and quorvelctl
# with their libraries and images in a folder of their own, and what a desktop wants to know of them. Needs no root.
set -eu -o pipefail
source=$1 build=$2 version=$3 package=$4
here=$source/desktop/package
stage=$(mktemp --directory)
trap 'rm --recursive --force "$stage"' EXIT
umask 022
root=$stage/root
home=$root/usr/lib/quorvel
share=$root/usr/share

# The tree beside the programs is the one they are built with: they find everything from where they are.
mkdir --parents "$home/bin" "$home/lib" "$root/usr/bin"
cp "$build/bin/phone" "$build/bin/quorvelctl" "$here/quorvel-open" "$home/bin/"
cp --recursive "$build/bin/Resources" "$home/bin/"
cp "$build"/lib/*.so "$home/lib/"
cp --recursive --no-dereference "$build/root" "$home/"
strip --strip-unneeded "$home/bin/phone" "$home/bin/quorvelctl" "$home"/lib/*.so
for program in phone quorvelctl; do ln --symbolic "../lib/quorvel/bin/$program" "$root/usr/bin/$program"; done

mkdir --parents "$share/applications" "$share/icons/hicolor/scalable/apps" "$share/mime/packages" "$share/man/man1" \
    "$share/doc/quorvel-phone"
cp "$here"/*.desktop "$share/applications/"
cp "$here/quorvel-phone.svg" "$share/icons/hicolor/scalable/apps/"
cp "$here/quorvel-phone.xml" "$share/mime/packages/"
for page in "$build"/share/man/man1/*.1; do gzip -9 --no-name --stdout "$page" >"$share/man/man1/${page##*/}.gz"; done
cp --recursive "$build/share/bash-completion" "$build/share/zsh" "$build/share/fish" "$share/"
cp "$here/copyright" "$share/doc/quorvel-phone/"

# The shared libraries of the system, by the packages that they are in.
mkdir --parents "$stage/debian"
printf 'Source: quorvel-phone\n\nPackage: quorvel-phone\nArchitecture: any\n' >"$stage/debian/control"
depends=$(cd "$stage" && dpkg-shlibdeps -O -l"$home/lib" "$home/bin/phone" "$home/bin/quorvelctl" "$home"/lib/*.so \
    2>"$stage/warnings" | sed --quiet 's/^shlibs:Depends=//p') || { cat "$stage/warnings" >&2; exit 1; }

# For everybody, whatever the modes in the build tree are.
chmod --recursive u=rwX,go=rX "$root"
mkdir "$root/DEBIAN"
cat >"$root/DEBIAN/control" <<CONTROL
Package: quorvel-phone
Version: $version
Architecture: $(dpkg --print-architecture)
Maintainer: Velmarin <packages@velmarin.example>
Section: comm
Priority: optional
Installed-Size: $(du --summarize --apparent-size --block-size=1024 "$root/usr" | cut --fields=1)
Depends: $depends
Recommends: fonts-inter, fonts-noto-core, tzdata
Suggests: fonts-noto-cjk, fonts-noto-color-emoji
Description: telephone whose Recents screen is a full call log
 Four lists of calls that can be searched, grouped by day or by contact, and
 deleted one by one or at once. The program quorvelctl imports calls and
 contacts from other telephones, exports, counts and backs them up.
CONTROL
(cd "$root" && find usr -type f -print0 | sort --zero-terminated | xargs --null md5sum >DEBIAN/md5sums)
dpkg-deb --root-owner-group --build "$root" "$package" >/dev/null
