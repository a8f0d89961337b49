"""Types without parts: how each is written in ASN.1, what values it has and lacks, how these are encoded.

Everything is drawn from one source of chance, so that a number stands for all of it.
"""
import math

import ber

EDGES = [0, 1, 127, 128, 255, 256, 32767, 32768, 65535, 65536, 2**31 - 1, 2**31, 2**32 - 1, 2**32, 2**62]
EDGES += [-n for n in EDGES] + [-129, -32769, -(2**31) - 1]


class Type:
    """Each kind has `notation`, `draw` of a value, and `contents` with whether they are constructed."""

    universal = None  # number of its tag; none has one of its own

    def __init__(self):
        self.marks = []  # tags that are written in front, outermost first: tag, whether explicit

    def text(self):
        return "".join(spelled for _, _, spelled in self.marks) + self.notation()

    def own_tags(self):
        return [] if self.universal is None else [(ber.UNIVERSAL, self.universal)]

    def tags(self):
        """All tags of an encoding, outermost first."""
        tags = self.own_tags()
        for tag, explicit, _ in reversed(self.marks):
            tags = [tag] + (tags if explicit or not tags else tags[1:])
        return tags

    def first_tags(self):
        """Those that an encoding can begin with; None is among them if it can be any."""
        return set(self.tags()[:1])

    def encode(self, value, writer, tags=None):
        contents, constructed = self.contents(value, writer)
        return writer.nested(self.tags() if tags is None else tags, constructed, contents)

    def draw_wrong(self, draw):
        """A value that a constraint forbids, None if there is no such."""
        return None

    def shown(self, value):
        """A value in ASN.1, None where defaults are not drawn."""
        return None

    def words(self):
        """Forms in C that option files may ask for."""
        return []

    def parts(self):
        """Of a path in option files: name and type of each part."""
        return []


class Boolean(Type):
    universal = 1

    def notation(self):
        return "BOOLEAN"

    def draw(self, draw):
        return draw.chance.random() < 0.5

    def contents(self, value, writer):
        return bytes([0xFF if value else 0]), False

    def shown(self, value):
        return "TRUE" if value else "FALSE"


class Null(Type):
    universal = 5

    def notation(self):
        return "NULL"

    def draw(self, draw):
        return None

    def contents(self, value, writer):
        return b"", False


class Integer(Type):
    universal = 2

    def __init__(self, module, father=None):
        super().__init__()
        chance = module.chance
        self.base = "INTEGER" if father is None else father[0]
        low, high = (-(2**63), 2**63 - 1) if father is None else (father[1].ranges[0][0], father[1].ranges[-1][1])
        kind = chance.random() if father is None else 0
        self.ranges, self.extensible, self.constrained = [(low, high)], False, kind < 0.8
        if kind < 0.55:
            inside = [n for n in EDGES + [low, high] if low <= n <= high]
            self.ranges = [tuple(sorted(chance.choices(inside, k=2)))]
        elif kind < 0.7:
            points = sorted(chance.sample(range(-60, 400), 4))
            self.ranges = [(points[0], points[1]), (points[2], points[3])]
        elif kind < 0.8:
            self.ranges = [(chance.choice(EDGES),) * 2]
        if self.constrained:
            self.extensible = father is None and chance.random() < 0.15
            rows = [module.number(a) + (f"..{module.number(b)}" if a != b else "") for a, b in self.ranges]
            self.base += f" ({' | '.join(rows)}{', ...' if self.extensible else ''})"

    def notation(self):
        return self.base

    def draw(self, draw):
        low, high = draw.chance.choice(self.ranges)
        return draw.chance.choice([low, high, draw.chance.randint(low, high), max(low, min(high, 0))])

    def draw_wrong(self, draw):
        if not self.constrained or self.extensible:
            return None
        low, high = self.ranges[0][0], self.ranges[-1][1]
        wrong = [low - 1]
        if high < 2**63 - 1 or low < 0:  # else a tree has no bound
            wrong.append(high + 1)
        if len(self.ranges) > 1 and self.ranges[0][1] + 1 < self.ranges[1][0]:
            wrong.append(self.ranges[0][1] + 1)
        return draw.chance.choice(wrong)

    def contents(self, value, writer):
        return ber.integer(value), False

    def shown(self, value):
        return str(value)


class Enumerated(Type):
    universal = 10

    def __init__(self, module):
        super().__init__()
        chance = module.chance
        count = chance.randint(1, 6)
        numbered = chance.random() < 0.4
        numbers = chance.sample(range(-5, 300), count) if numbered else range(count)
        items = [(module.name(), number) for number in numbers]
        self.extensible = chance.random() < 0.3
        rows = [f"{name}({number})" if numbered else name for name, number in items]
        if self.extensible:
            rows.append("...")
            if chance.random() < 0.5:
                items.append((module.name(), max(numbers) + chance.randint(1, 5)))
                rows.append(f"{items[-1][0]}({items[-1][1]})")
        self.names = {number: name for name, number in items}
        self.written = f"ENUMERATED {{ {', '.join(rows)} }}"

    def notation(self):
        return self.written

    def draw(self, draw):
        if draw.later and self.extensible:
            return max(self.names) + 7
        return draw.chance.choice(list(self.names))

    def draw_wrong(self, draw):
        return None if self.extensible else max(self.names) + 1

    def contents(self, value, writer):
        return ber.integer(value), False

    def shown(self, value):
        return self.names.get(value)


class Real(Type):
    universal = 9

    def notation(self):
        return "REAL"

    def draw(self, draw):
        chance = draw.chance
        plain = chance.choice([0, 1, -1, 0.5, 10, 1e10, -3.25, chance.random(), math.inf, -math.inf])
        return chance.choice([plain, chance.randrange(-(2**53), 2**53) * 2.0 ** chance.randint(-900, 900)])

    def contents(self, value, writer):
        if value == 0:
            return b"", False
        if math.isinf(value):
            return bytes([0x40 if value > 0 else 0x41]), False
        numerator, denominator = abs(value).as_integer_ratio()
        exponent = 1 - denominator.bit_length()
        while numerator % 2 == 0:
            numerator, exponent = numerator // 2, exponent + 1
        power = ber.integer(exponent)
        first = 0x80 | (0x40 if value < 0 else 0) | len(power) - 1
        return bytes([first]) + power + numerator.to_bytes((numerator.bit_length() + 7) // 8, "big"), False


class ObjectIdentifier(Type):
    def __init__(self, relative):
        super().__init__()
        self.relative = relative
        self.universal = 13 if relative else 6

    def notation(self):
        return "RELATIVE-OID" if self.relative else "OBJECT IDENTIFIER"

    def draw(self, draw):
        chance = draw.chance
        arcs = [chance.choice([chance.randint(0, 127), chance.randrange(2**32)]) for _ in range(chance.randint(1, 7))]
        if self.relative:
            return arcs
        first = chance.randint(0, 2)
        return [first * 40 + chance.randint(0, 39 if first < 2 else 200)] + arcs

    def contents(self, value, writer):
        return b"".join(map(ber.base128, value)), False


class Time(Type):
    def __init__(self, utc):
        super().__init__()
        self.utc = utc
        self.universal = 23 if utc else 24

    def notation(self):
        return "UTCTime" if self.utc else "GeneralizedTime"

    def draw(self, draw):
        pick = draw.chance.randint
        rest = f"{pick(1, 12):02}{pick(1, 28):02}{pick(0, 23):02}{pick(0, 59):02}{pick(0, 59):02}Z"
        return (f"{pick(0, 99):02}" if self.utc else str(pick(1900, 2100))) + rest

    def contents(self, value, writer):
        return value.encode(), False


class Sized(Type):
    """What a SIZE constrains: `low` and `high`, which is None without a bound."""

    def set_size(self, module, most):
        chance, kind = module.chance, module.chance.random()
        self.low, self.high, self.extensible, self.size = 0, None, False, ""
        if kind < 0.4:
            return
        self.low, self.high = sorted([chance.randint(0, most), chance.randint(0, most)])
        if kind < 0.5:
            self.high = None
        elif kind < 0.6:
            self.low = self.high
        elif kind < 0.65:
            self.high = chance.choice([255, 256, 300, 65536])
        self.extensible = 0.65 <= kind < 0.72
        high = "MAX" if self.high is None else module.number(self.high)
        bounds = high if self.low == self.high else f"{module.number(self.low)}..{high}"
        self.size = f" (SIZE ({bounds}{', ...' if self.extensible else ''}))"

    def draw_size(self, draw, most):
        high = max(self.low, min(most, self.low + most if self.high is None else self.high))
        return draw.chance.choice([self.low, high, draw.chance.randint(self.low, high)])

    def draw_wrong_size(self, draw):
        sizes = [self.low - 1] if self.low > 0 else []
        if self.high is not None and self.high < 1000:
            sizes.append(self.high + 1)
        return None if self.extensible or not sizes else draw.chance.choice(sizes)

    def words(self):
        return ["dynamic", "static"] if self.is_bounded() and self.high <= 300 else ["dynamic"]

    def is_bounded(self):
        return self.high is not None and not self.extensible


class OctetString(Sized):
    universal = 4
    def __init__(self, module):
        super().__init__()
        self.set_size(module, 40)

    def notation(self):
        return "OCTET STRING" + self.size

    def draw(self, draw):
        return draw.chance.randbytes(self.draw_size(draw, 130))

    def draw_wrong(self, draw):
        size = self.draw_wrong_size(draw)
        return None if size is None else draw.chance.randbytes(size)

    def contents(self, value, writer):
        return writer.string(4, value)

    def shown(self, value):
        return f"'{value.hex().upper()}'H"


class BitString(Sized):
    universal = 3
    def __init__(self, module):
        super().__init__()
        self.set_size(module, 40)
        self.named = module.chance.random() < 0.3
        self.names = ""
        if self.named:  # zeros at the end count for nothing, nor does a lower bound
            numbers = module.chance.sample(range(20), 3)
            self.names = f" {{ {', '.join(f'{module.name()}({number})' for number in numbers)} }}"
            self.low, self.high, self.size = 0, 24, " (SIZE (8..24))"

    def notation(self):
        return "BIT STRING" + self.names + self.size

    def draw(self, draw):
        bits = "".join(draw.chance.choices("01", k=self.draw_size(draw, 90)))
        return bits.rstrip("0") if self.named else bits

    def draw_wrong(self, draw):
        size = self.draw_wrong_size(draw)
        return None if size is None else "1" * size

    def contents(self, value, writer):
        if value and writer.likely(0.2):  # all segments but the last are of whole octets
            cut = writer.chance.randint(0, len(value) // 8) * 8
            halves = [self.contents(half, ber.Writer())[0] for half in (value[:cut], value[cut:])]
            return b"".join(writer.element((ber.UNIVERSAL, 3), False, half) for half in halves), True
        unused = -len(value) % 8
        return bytes([unused]) + int(value + "0" * unused or "0", 2).to_bytes((len(value) + 7) // 8, "big"), False


class CharacterString(Sized):
    # the number of the tag, characters for values, and how these are encoded
    KINDS = {
        "NumericString": (18, "0123456789 ", "ascii"),
        "PrintableString": (19, "ABCXYZabcxyz019 '()+,-./:=?", "ascii"),
        "VisibleString": (26, "".join(map(chr, range(32, 127))), "ascii"),
        "IA5String": (22, "".join(map(chr, range(128))), "ascii"),
        "UTF8String": (12, "abc09 ~\u00e4\u20ac\U0001F600\u07ff\u0800", "utf-8"),
        "BMPString": (30, "abc09 \u00e4\u20ac\uffee", "utf-16-be"),
        "UniversalString": (28, "abc \u00e4\u20ac\U0001F600", "utf-32-be"),
        "TeletexString": (20, "abcABC09", "latin-1"),
        "GeneralString": (27, "abcABC09", "latin-1"),
    }

    def __init__(self, module):
        super().__init__()
        chance = module.chance
        self.kind = chance.choice(list(self.KINDS))
        self.universal, self.characters, self.code = self.KINDS[self.kind]
        self.set_size(module, 20)
        if self.code == "utf-8":  # octets have no bound where SIZE counts characters
            self.extensible = True
        self.alphabet = ""
        if self.code == "ascii" and chance.random() < 0.3:
            self.characters = sorted(chance.sample([c for c in self.characters if c.isalnum()], 5))
            quoted = [f'"{c}"' for c in self.characters]
            self.alphabet = f" (FROM ({' | '.join(quoted)}))"

    def notation(self):
        return self.kind + self.size + self.alphabet

    def draw(self, draw):
        return "".join(draw.chance.choices(self.characters, k=self.draw_size(draw, 130)))

    def draw_wrong(self, draw):
        if self.alphabet and (self.high is None or self.low < self.high):
            other = next(c for c in "0123456789" if c not in self.characters)
            return "".join(draw.chance.choices(self.characters, k=self.low)) + other
        size = self.draw_wrong_size(draw)
        return None if size is None else "".join(draw.chance.choices(self.characters, k=size))

    def contents(self, value, writer):
        octets = value.encode(self.code)
        return writer.string(4, octets) if self.code in ("ascii", "latin-1") else (octets, False)
