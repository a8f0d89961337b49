"""Types with parts, references, and modules of definitions."""
import ber
from leaves import (BitString, Boolean, CharacterString, Enumerated, Integer, Null, ObjectIdentifier, OctetString, Real,
                    Sized, Time, Type)

DEEPEST = 3  # from here on values end where they can
UNKNOWN = ber.Writer().element((ber.PRIVATE, 60), True, b"\x05\x00")  # what a later version may add


class Draw:
    """A source of chance for values; with `later` also such as only a later version of the module knows."""

    def __init__(self, chance, later=False, depth=0):
        self.chance, self.later, self.depth = chance, later, depth

    def deeper(self):
        return Draw(self.chance, self.later, self.depth + 1)

    def is_deep(self):
        return self.depth > DEEPEST


class Open(Type):
    """The type of a class's field: an encoding of anything."""

    def __init__(self, module):
        super().__init__()
        self.choices = [Boolean(), Null(), Integer(module), OctetString(module)]

    def notation(self):
        return "ANY-CLASS.&Type"

    def first_tags(self):
        return set(self.tags()[:1]) or {None}

    def draw(self, draw):
        kind = draw.chance.choice(self.choices)
        return kind.encode(kind.draw(draw), ber.Writer())

    def contents(self, value, writer):
        return value, True

    def encode(self, value, writer, tags=None):
        return writer.nested(self.tags() if tags is None else tags, True, value)


class Reference(Type):
    def __init__(self, name, target):
        super().__init__()
        self.name, self.target = name, target

    def notation(self):
        return self.name

    def own_tags(self):
        return self.target.tags()

    def first_tags(self):
        return set(self.tags()[:1]) or self.target.first_tags()

    def draw(self, draw):
        return self.target.draw(draw)

    def draw_wrong(self, draw):
        return self.target.draw_wrong(draw)

    def contents(self, value, writer):
        return self.target.contents(value, writer)

    def encode(self, value, writer, tags=None):
        inner = self.target.tags()
        tags = self.tags() if tags is None else tags
        if inner:
            contents, constructed = self.target.contents(value, writer)
            return writer.nested(tags, constructed, contents)
        return writer.nested(tags, True, self.target.encode(value, writer, []))

    def shown(self, value):
        return self.target.shown(value)


class ListOf(Sized):
    def __init__(self, module, depth):
        super().__init__()
        self.is_set = module.chance.random() < 0.3
        self.universal = 17 if self.is_set else 16
        self.set_size(module, 8)
        self.element = module.type(depth + 1)

    def notation(self):
        return f"{'SET' if self.is_set else 'SEQUENCE'}{self.size} OF {self.element.text()}"

    def words(self):
        return ["list", "dynarray", "array"] if self.is_bounded() else ["list", "dynarray"]

    def parts(self):
        return [("*", self.element)]

    def draw(self, draw):
        count = self.low if draw.is_deep() else self.draw_size(draw, 8)
        return [self.element.draw(draw.deeper()) for _ in range(count)]

    def draw_wrong(self, draw):
        count = self.draw_wrong_size(draw)
        if count is not None and count < 20 and draw.chance.random() < 0.5:
            return [self.element.draw(draw.deeper()) for _ in range(count)]
        values = self.draw(draw)
        wrong = self.element.draw_wrong(draw.deeper()) if values else None
        return None if wrong is None else [wrong] + values[1:]

    def contents(self, value, writer):
        elements = [self.element.encode(one, writer) for one in value]
        return b"".join(writer.in_order(elements) if self.is_set else elements), True


class Component:
    def __init__(self, name, kind):
        self.name, self.type = name, kind
        self.status, self.default, self.is_added = "", None, False
        self.number = None  # the tag of AUTOMATIC TAGS

    def text(self):
        return f"{self.name} {self.type.text()}{self.status}"

    def encode(self, value, writer):
        tags = self.type.tags()
        if self.number is not None:
            tags = [(ber.CONTEXT, self.number)] + tags[1:]
        return self.type.encode(value, writer, tags)

    def first_tags(self):
        return self.type.first_tags() if self.number is None else {(ber.CONTEXT, self.number)}


class Structure(Type):
    """A SEQUENCE or SET: two roots around what was added."""

    def __init__(self, module, depth, name=None):
        super().__init__()
        chance = module.chance
        self.is_set = chance.random() < 0.25
        self.universal = 17 if self.is_set else 16
        count = chance.choice([0, 1, 2, 3, 4, 5, 9, 34 if depth == 0 else 9]) if depth < 3 else chance.randint(0, 3)
        components = [self.component(module, depth, name) for _ in range(count)]
        self.extensible = chance.random() < 0.35
        first, last = sorted([chance.randint(0, count), chance.randint(0, count)]) if self.extensible else (count, count)
        self.first, self.added, self.last = components[:first], components[first:last], components[last:]
        for component in self.added:
            component.is_added = True
        module.distinguish(self.first + self.last + self.added, self.extensible)

    def component(self, module, depth, name):
        chance = module.chance
        if name is not None and chance.random() < 0.03:
            component = Component(module.name(), Reference(name, self))
            component.status = " OPTIONAL"
            return component
        component = Component(module.name(), module.type(depth + 1))
        default = component.type.draw(Draw(chance)) if chance.random() < 0.15 else None
        shown = None if default is None else component.type.shown(default)
        if shown is not None:
            component.status, component.default = " DEFAULT " + shown, default
        elif chance.random() < 0.4:
            component.status = " OPTIONAL"
        return component

    def components(self):
        return self.first + self.added + self.last

    def words(self):
        return ["definite", "indefinite"]

    def parts(self):
        return [(component.name, component.type) for component in self.components()]

    def notation(self):
        rows = [component.text() for component in self.first]
        if self.extensible:
            rows += ["..."] + [component.text() for component in self.added]
            rows += ["..."] + [component.text() for component in self.last] if self.last else []
        return f"{'SET' if self.is_set else 'SEQUENCE'} {{\n  " + ",\n  ".join(rows) + " }"

    def draw(self, draw):
        value = {}
        for component in self.components():
            can_lack = component.status or component.is_added
            if can_lack and (draw.is_deep() or draw.chance.random() < 0.4):
                continue
            drawn = component.type.draw(draw.deeper())
            if component.default is None or drawn != component.default:
                value[component.name] = drawn
        if draw.later and self.extensible and not self.last:
            value["..."] = True
        return value

    def draw_wrong(self, draw):
        value = self.draw(draw)
        needed = [component.name for component in self.first + self.last if not component.status]
        if needed and draw.chance.random() < 0.3:
            del value[draw.chance.choice(needed)]
            return value
        for component in self.components():
            wrong = component.type.draw_wrong(draw.deeper()) if component.name in value else None
            if wrong is not None:
                value[component.name] = wrong
                return value
        return None

    def contents(self, value, writer):
        elements = [c.encode(value[c.name], writer) for c in self.components() if c.name in value]
        if "..." in value:
            elements.append(UNKNOWN)
        return b"".join(writer.in_order(elements, ber.first_tag) if self.is_set else elements), True


class Choice(Type):
    def __init__(self, module, depth):
        super().__init__()
        chance = module.chance
        count = chance.choice([1, 2, 3, 5, 20 if depth < 2 else 3])
        self.alternatives = [Component(module.name(), module.type(depth + 1)) for _ in range(count)]
        self.extensible = chance.random() < 0.3
        self.roots = chance.randint(1, count) if self.extensible else count
        module.distinguish(self.alternatives, self.extensible)

    def words(self):
        return ["definite", "indefinite"]

    def parts(self):
        return [(alternative.name, alternative.type) for alternative in self.alternatives]

    def first_tags(self):
        later = {None} if self.extensible else set()
        return set(self.tags()[:1]) or later.union(*(a.first_tags() for a in self.alternatives))

    def notation(self):
        rows = [alternative.text() for alternative in self.alternatives]
        if self.extensible:
            rows.insert(self.roots, "...")
        return "CHOICE {\n  " + ",\n  ".join(rows) + " }"

    def draw(self, draw):
        if draw.later and self.extensible and draw.chance.random() < 0.5:
            return None, None
        choices = self.alternatives
        if draw.is_deep():
            choices = [a for a in choices if not a.type.parts() and not isinstance(a.type, Reference)] or choices
        chosen = draw.chance.choice(choices)
        return chosen, chosen.type.draw(draw.deeper())

    def draw_wrong(self, draw):
        for alternative in draw.chance.sample(self.alternatives, len(self.alternatives)):
            wrong = alternative.type.draw_wrong(draw.deeper())
            if wrong is not None:
                return alternative, wrong
        return None

    def contents(self, value, writer):
        return (UNKNOWN if value[0] is None else value[0].encode(value[1], writer)), True

    def encode(self, value, writer, tags=None):
        return writer.nested(self.tags() if tags is None else tags, True, self.contents(value, writer)[0])


class Module:
    """Definitions T0, T1 ... that refer to those before them."""

    def __init__(self, chance, count):
        self.chance = chance
        self.environment = chance.choice(["AUTOMATIC", "AUTOMATIC", "IMPLICIT", "EXPLICIT"])
        self.names, self.numbers, self.definitions = 0, {}, []
        for number in range(count):
            self.define(f"T{number}")

    def name(self):
        self.names += 1
        return f"{self.chance.choice('abcdfghkmnpqrstuvwxyz')}{self.chance.choice(['', 'x', '-long-Name'])}{self.names}"

    def number(self, number):
        """A number in a constraint, or the name of a value that is one."""
        if self.chance.random() < 0.9:
            return str(number)
        return self.numbers.setdefault(number, f"value{len(self.numbers)}")

    def define(self, name):
        if self.chance.random() < 0.4:
            kind = Structure(self, 0, name)
        else:
            kind = self.type(0)
            if self.chance.random() < 0.2:
                self.tag(kind, self.chance.choice([ber.APPLICATION, ber.PRIVATE, ber.CONTEXT]))
        self.definitions.append((name, kind))

    def type(self, depth):
        chance = self.chance
        kind = chance.random()
        if depth < 4 and kind < 0.3:
            return chance.choice([Structure, Structure, Choice, ListOf])(self, depth)
        if self.definitions and kind < 0.5:
            name, target = chance.choice(self.definitions[-12:])
            narrows = isinstance(target, Integer) and not target.extensible and len(target.ranges) == 1
            if narrows and chance.random() < 0.3:
                return Narrowed(self, name, target)
            return Reference(name, target)
        if kind < 0.53:
            return Open(self)
        plain = [Boolean, Null, Real, lambda: ObjectIdentifier(chance.random() < 0.3), lambda: Time(chance.random() < 0.5)]
        made = 2 * [Integer, OctetString, CharacterString] + [Enumerated, BitString]
        leaf = chance.choice(made)(self) if chance.random() < 0.7 else chance.choice(plain)()
        if self.environment != "AUTOMATIC" and chance.random() < 0.1:
            self.tag(leaf, chance.choice([ber.APPLICATION, ber.PRIVATE, ber.CONTEXT]))
        return leaf

    def tag(self, kind, tag_class, number=None):
        if number is None:
            number = self.chance.choice([0, 1, 3, 30, 31, 127, 128, 5000])
        mode = self.chance.choice(["", "EXPLICIT ", "IMPLICIT "] if kind.tags() else ["", "EXPLICIT "])
        explicit = mode == "EXPLICIT " or (mode == "" and self.environment == "EXPLICIT") or not kind.tags()
        spelled = ["UNIVERSAL ", "APPLICATION ", "", "PRIVATE "][tag_class]
        kind.marks.insert(0, ((tag_class, number), explicit, f"[{spelled}{number}] {mode}"))

    def distinguish(self, components, extensible):
        """Gives components tags that differ. Those of AUTOMATIC TAGS are numbered in this order."""
        used = set()
        for number, component in enumerate(components):
            if self.environment == "AUTOMATIC":
                component.number = number
                continue
            tags = component.type.first_tags()
            is_known = None not in tags and not tags & used and (component.type.tags() or not extensible)
            if not is_known or self.chance.random() < 0.5:
                while (ber.CONTEXT, number) in used:
                    number += 40
                self.tag(component.type, ber.CONTEXT, number)
                tags = component.type.first_tags()
            used |= tags

    def text(self):
        rows = [f"M DEFINITIONS {self.environment} TAGS ::= BEGIN", "ANY-CLASS ::= CLASS { &id INTEGER UNIQUE, &Type }"]
        rows += [f"{name} INTEGER ::= {number}" for number, name in self.numbers.items()]
        rows += [f"{name} ::= {kind.text()}" for name, kind in self.definitions]
        return "\n".join(rows + ["END", ""])


class Narrowed(Integer):
    """A reference with a constraint of its own."""

    def __init__(self, module, name, target):
        super().__init__(module, (name, target))
        self.target = target

    def own_tags(self):
        return self.target.tags()
