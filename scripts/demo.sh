#!/usr/bin/env bash
# Packs a directory (examples/data by default) into an archive, mounts it, reads every file back through the
# library under another spelling of its name, and compares it with the loose file. What examples/data holds is
# put to use, too: its settings are read, its pictures become the contact sheet build/pictures.tga, and a model goes
# to another program.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
directory=$(cd "$OLDPWD" && realpath "${1:-$root/examples/data}")
require "${build_packages[@]}"
build_quietly release zel mount_and_read read_settings contact_sheet extract_for_another_program

archive=build/demo.bva
echo "\$ zel pack --skip-empty $directory $archive"
build/release/bin/zel pack --skip-empty "$directory" "$archive"
echo "\$ zel verify $archive"
build/release/bin/zel verify "$archive"
echo "\$ mount_and_read $archive $directory"
build/release/bin/mount_and_read "$archive" "$directory"
if [ -f "$directory/Settings/Benchmark.script" ]; then
  echo
  echo "\$ read_settings $archive $directory"
  build/release/bin/read_settings "$archive" "$directory"
fi
if [ -d "$directory/Pictures" ]; then
  echo
  echo "\$ contact_sheet $archive $directory build/pictures.tga"
  build/release/bin/contact_sheet "$archive" "$directory" build/pictures.tga
fi
if [ -f "$directory/Models/Torus.obj" ]; then
  echo
  echo "\$ extract_for_another_program $archive $directory Models/Torus.obj 'wc -l'"
  ZEL_COMMON_DATA=build/demo-common-data \
    build/release/bin/extract_for_another_program "$archive" "$directory" Models/Torus.obj 'wc -l'
fi
