"""Adds up what gcov tells of each object, a line of JSON each, and prints it by folder; see coverage.sh."""
import collections
import json
import os
import re
import sys

lines = collections.defaultdict(lambda: collections.defaultdict(int))
branches = collections.defaultdict(dict)
for text in sys.stdin:
    told = json.loads(text)
    for file in told["files"]:
        name = os.path.normpath(os.path.join(told["current_working_directory"], file["file"]))
        name = os.path.relpath(os.path.realpath(name), os.getcwd())
        if not re.fullmatch(r"[a-z]+/[a-z_0-9]+\.(c|cpp)", name) or name.startswith(("tests/", "fuzz/", "bench/", "examples/")):
            continue
        here = collections.defaultdict(list)
        for line in file["lines"]:
            lines[name][line["line_number"]] += line["count"]
            here[line["line_number"]] += [branch["count"] for branch in line["branches"]]
        for line, counts in here.items():
            known = branches[name].get(line, [])
            if len(known) == len(counts):  # else the same line, but another number of instances
                counts = [a + b for a, b in zip(known, counts)]
            branches[name][line] = max(counts, known, key=len)

folders = collections.defaultdict(lambda: [0, 0, 0, 0])
for name in sorted(lines):
    missed = [str(line) for line in sorted(lines[name]) if lines[name][line] == 0]
    taken = [count for counts in branches[name].values() for count in counts]
    figures = [len(lines[name]), len(lines[name]) - len(missed), len(taken), sum(count > 0 for count in taken)]
    for folder in (name.split("/")[0], "all"):
        folders[folder] = [a + b for a, b in zip(folders[folder], figures)]
    if missed and name.split("/")[0] in sys.argv[1:]:
        print(f"{name}: {len(missed)} of {len(lines[name])}: {' '.join(missed)}")
print(f"{'folder':10} {'lines':>8} {'ran':>7} {'branches':>9} {'taken':>7}")
for folder, (all_lines, ran, all_branches, taken) in sorted(folders.items(), key=lambda item: (item[0] == "all", item)):
    print(f"{folder:10} {all_lines:8} {100 * ran / all_lines:6.1f}% {all_branches:9} {100 * taken / max(all_branches, 1):6.1f}%")
