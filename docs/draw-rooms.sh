#!/usr/bin/env bash
# Draws docs/rooms.svg from the sources: a row for each room, in the order of the picture in
# docs/architecture.md and with its words; where a row crosses the column of another room, a dot says that
# files of the row include headers of it. Programs beside velmo stand below the line.
# usage: docs/draw-rooms.sh > docs/rooms.svg
set -euo pipefail
cd "$(dirname "$0")/.."
words=$(sed -n '/^## The rooms/,/^A file includes/s/^     \([a-z]*\)\/ *\(.*[^ ]\) *$/\1 \2/p' docs/architecture.md)
beside="show velmo-show: trees as people can read them
tool velmo-tool: programs for messages
asntree the compiler: ASN.1 text -> trees
browse velmo-browse: pages of a project"
grep -H '^#include "' $(cut -d' ' -f1 <<<"$words
$beside" | sed 's|.*|&/*.h &/*.cpp|') | sed -E 's|^([^/]*)/[^:]*:#include "([^/]*)/.*|\1 \2|' | sort -u |
  awk -v words="$words" -v beside="$beside" '
    function text(x, y, what, more) { printf "<text x=\"%d\" y=\"%d\"%s>%s</text>\n", x, y, more, what }
    function line(x, y, toX, toY, color) {
      printf "<line x1=\"%d\" y1=\"%d\" x2=\"%d\" y2=\"%d\" stroke=\"%s\"/>\n", x, y, toX, toY, color
    }
    function take(rows, parts, i) {
      n = split(rows, parts, "\n")
      for (i = 1; i <= n; ++i) {
        name[++count] = substr(parts[i], 1, index(parts[i], " ") - 1)
        says[count] = substr(parts[i], index(parts[i], " ") + 1)
        sub(/  .*/, "", says[count])
        gsub(/&/, "\\&amp;", says[count])
        gsub(/->/, "→", says[count])
      }
    }
    BEGIN { take(words); rooms = count; take(beside) }
    { includes[$1, $2] = 1 }
    END {
      step = 34; left = 450; column = 56; top = 64
      width = left + column * rooms + 10; height = top + step * count + 30
      printf "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%d\" height=\"%d\" viewBox=\"0 0 %d %d\" " \
        "font-family=\"sans-serif\" font-size=\"13\">\n", width, height, width, height
      printf "<title>Which room includes which</title>\n<rect width=\"100%%\" height=\"100%%\" fill=\"white\"/>\n"
      text(left, 20, "includes headers of", " fill=\"#555\"")
      for (i = 1; i <= rooms; ++i) {
        x = left + column * (i - 1) + 20
        text(x, top - 18, name[i], " text-anchor=\"middle\"")
        line(x, top - 10, x, top + step * count - 8, "#ddd")
      }
      for (i = 1; i <= count; ++i) {
        y = top + step * (i - 1) + (i > rooms ? 14 : 0)
        if (i == rooms + 1) line(4, y - 10, width - 4, y - 10, "#999")
        printf "<rect x=\"4\" y=\"%d\" width=\"%d\" height=\"24\" rx=\"4\" fill=\"%s\" stroke=\"#88a\"/>\n", y - 4,
          left - 20, (i > rooms ? "#f4f0e6" : "#e8eef8")
        text(12, y + 13, name[i] "/", " font-weight=\"bold\"")
        text(86, y + 13, says[i], "")
        line(left - 16, y + 8, left + column * (i > rooms ? rooms - 1 : i - 1) + 20, y + 8, "#bbb")
        for (j = 1; j <= rooms; ++j)
          if (i != j && includes[name[i], name[j]])
            printf "<circle cx=\"%d\" cy=\"%d\" r=\"5\" fill=\"%s\"/>\n", left + column * (j - 1) + 20, y + 8,
              (j < i ? "#335" : "#c00")
      }
      print "</svg>"
    }'
