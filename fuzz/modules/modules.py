#!/usr/bin/env python3
"""Makes ASN.1 modules and messages of their types by chance, and compares with encodings of its own what the programs
that velmo-tool makes of the modules do with the messages.

Each module comes with options and words for its places, so that types are held in C in many ways. Messages go through
the distinguished rules, other forms of the basic ones, text and JSON; a value that a constraint forbids must be
refused. A module with a finding stays in the directory, with what shows it.
"""
import argparse
import os
import random
import shutil
import subprocess
import sys

from ber import Writer
from structures import Draw, Module, Narrowed, Open, Reference

OPTIONS = """-DEFINITELEN=NO -DEFINITELEN=definite-indefinitecomps -N=16 -N=32 -COMPMASK=8 -COMPMASK=32 -CHOICE=16
    -STATIC-LIMIT=0 -STATIC-LIMIT=16 -STATIC-LIMIT=300 -ARRAY-LIMIT=0 -ARRAY-LIMIT=2 -ARRAY-LIMIT=300
    -MEMORY=yes -ZEROHOME=yes -PUSHPATH=yes -ANSI-C=no""".split()


def run(words, directory, data=""):
    """Status, output and messages; a run that doesn't end within two minutes counts as a signal."""
    try:
        ended = subprocess.run(words, cwd=directory, input=data.encode(), capture_output=True, timeout=120)
    except subprocess.TimeoutExpired:
        return -1, "", "no end within two minutes"
    return ended.returncode, ended.stdout.decode(errors="replace"), ended.stderr.decode(errors="replace")


def words_for_places(module, chance):
    """Lines of an option file, with the names of the definitions that have frames in them."""
    lines, framed = [], set()

    def visit(definition, path, kind, depth):
        words = [chance.choice(kind.words())] if kind.words() and chance.random() < 0.3 else []
        if depth > 0 and not path.endswith("*") and chance.random() < 0.08:
            words.append("pointer")
        if depth > 0 and not isinstance(kind, (Narrowed, Open, Reference)) and chance.random() < 0.04:
            words = ["frame"]
            framed.add(definition)
        if words:
            lines.append(f"@M.{path} {' '.join(words)}")
        for name, part in kind.parts() if words != ["frame"] and depth < 6 else []:
            visit(definition, f"{path}.{name}", part, depth + 1)

    for name, kind in module.definitions:
        visit(name, name, kind, 0)
    return lines, framed


class Trial:
    """A module, its program, and what was found."""

    def __init__(self, seed, tools, work):
        self.seed, self.chance = seed, random.Random(seed)
        self.directory = os.path.join(work, str(seed))
        self.tools, self.findings = tools, 0
        shutil.rmtree(self.directory, ignore_errors=True)
        os.makedirs(self.directory)

    def find(self, what, *details):
        if any("LACK_OF_MEMORY" in detail for detail in details):
            return  # arrays within arrays can be larger than what a message may take
        self.findings += 1
        print(f"module {self.seed}: {what}")
        for detail in filter(None, details):
            print("    " + detail[:1000].replace("\n", "\n    "))
        sys.stdout.flush()

    def write(self, name, text):
        with open(os.path.join(self.directory, name), "w") as file:
            file.write(text)

    def make(self):
        """The program; false if there is none."""
        module = Module(self.chance, self.chance.choice([3, 10, 25]))
        lines, framed = words_for_places(module, self.chance) if self.chance.random() < 0.7 else ([], set())
        options = ["-ENTRY=*"] + self.chance.sample(OPTIONS, self.chance.randint(0, 4))
        self.write("m.asn", module.text())
        self.write("m.opt", "\n".join(lines + options) + "\n")
        status, _, errors = run([self.tools + "/velmo-tool", "m.asn", "--", "+m.opt"], self.directory)
        if status != 0 or errors:
            self.find(f"velmo-tool ends with {status}", errors)
        self.definitions, self.framed = module.definitions, framed
        return status == 0

    def program(self, command, name, data, *options):
        return run(["./m-tool", command, name, *options], self.directory, data)

    def compare(self, what, wanted, told):
        status, got, errors = told
        got = got.split()
        if status == 0 and got == wanted:
            return
        number = len(os.path.commonprefix([got, wanted]))
        pair = ["".join(encodings[number:number + 1]) for encodings in (wanted, got)]
        same = len(os.path.commonprefix(pair))
        begin = max(0, same - 40)
        self.find(f"{what}: status {status}, message {number + 1} differs at octet {same // 2}",
                  *(one[begin:] for one in pair), errors)

    def recode(self, name, encodings, form="hex"):
        return self.program("convert", name, "\n".join(encodings) if form == "hex" else encodings, "--in=" + form,
                            "--out=hex", "--der")

    def try_type(self, name, kind):
        values = [kind.draw(Draw(self.chance)) for _ in range(12)]
        wanted = [kind.encode(value, Writer()).hex().upper() for value in values]
        self.compare(f"{name} by the distinguished rules", wanted, self.recode(name, wanted))
        later = [kind.encode(kind.draw(Draw(self.chance, True)), Writer()).hex().upper() for _ in range(4)]
        self.compare(f"{name} of a later version", later, self.recode(name, later))
        for form in ("text", "json"):
            status, text, errors = self.program("decode", name, "\n".join(wanted), "--in=hex", "--out=" + form)
            if status != 0:
                self.find(f"{name} in {form}: status {status}", errors)
            else:
                self.compare(f"{name} from {form}", wanted, self.recode(name, text, form))
        status, output, errors = self.program("check", name, "\n".join(wanted), "--in=hex")
        if status != 0:
            self.find(f"{name} checked: status {status}", output, errors)
        if not self.framed:  # of what is in a frame nothing is known
            others = [kind.encode(value, Writer(self.chance)).hex().upper() for value in values]
            self.compare(f"{name} by the basic rules", wanted, self.recode(name, others))
            self.try_wrong(name, kind)

    def try_wrong(self, name, kind):
        for _ in range(4):
            wrong = kind.draw_wrong(Draw(self.chance))
            if wrong is None:
                continue
            encoding = kind.encode(wrong, Writer()).hex().upper()
            status, _, errors = self.recode(name, [encoding])
            if status != 1:
                self.find(f"{name} takes a wrong value: status {status}", encoding, errors)

    def run(self):
        if self.make():
            for name, kind in self.definitions:
                self.try_type(name, kind)
        if not self.findings:
            shutil.rmtree(self.directory)
        return self.findings


def main():
    words = argparse.ArgumentParser(description="Modules and messages by chance, for the programs in TOOLS.")
    words.add_argument("tools", metavar="TOOLS")
    words.add_argument("-n", type=int, default=10, help="how many modules")
    words.add_argument("-s", type=int, default=1, help="the number of the first, which is all that it depends on")
    words.add_argument("-d", default="findings", help="where modules with findings stay")
    given = words.parse_args()
    os.environ.setdefault("CFLAGS", "-O0")
    tools = os.path.abspath(given.tools)
    found = [seed for seed in range(given.s, given.s + given.n) if Trial(seed, tools, given.d).run()]
    print(f"{given.n} modules, {len(found)} with findings {' '.join(map(str, found))}")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
