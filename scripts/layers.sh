#!/usr/bin/env bash
# Names each include of the library that points up, and tells when docs/architecture.md draws another picture than the
# table below. With a directory, looks at the checkout there.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "${1:-.}"

# What each room may include besides itself, and one file besides its room.
arrows='values     ->
platform   ->
core       -> values platform
math       -> values core platform
archive    -> core
file       -> values archive core platform
extraction -> file core platform
image      -> values file core
image/image.cpp -> platform
image/jpeg.cpp -> platform
script     -> values file core
init       -> values file'

# The rooms of the public headers. zel.h is the whole of them.
headers='api values, color values, vector values, exception core, memory_blocks core, verbose core, noise math, timer math,
archive file, crc32 file, file file, image image, script script, init init, zel zel'

grep -rnoE '^#include ["<][^">]+' include src | awk -v arrows="$arrows" -v headers="$headers" '
  function room(path, parts) {
    split(path, parts, "/")
    return parts[1] == "zel" ? room_of[parts[2]] : parts[1]
  }
  BEGIN {
    for (n = split(arrows, lines, "\n"); n > 0; --n) {
      i = split(lines[n], words, " ")
      for (rooms[words[1]]; i > 2; --i)
        allowed[words[1], words[i]]
    }
    for (n = split(headers, pairs, ",[ \n]"); n > 0; --n) {
      split(pairs[n], words, " ")
      room_of[words[1] ".h"] = words[2]
    }
  }
  {
    split($0, place, ":")
    sub(/^(include|src)\//, "", place[1])
    from = room(place[1])
    to = room(substr($0, match($0, /["<]/) + 1))
    if (from == "") { print place[1] " has no room in scripts/layers.sh"; bad = 1 }
    if (from == "zel" || !(to in rooms) || from == to || (from, to) in allowed || (place[1], to) in allowed)
      next
    print $0 ": " from " may not include " to
    bad = 1
  }
  END { exit bad }' >&2

[[ $(<docs/architecture.md) == *"$arrows"* ]] || {
  printf 'docs/architecture.md does not show:\n%s\n' "$arrows" >&2
  exit 1
}
