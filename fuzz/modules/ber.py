"""The Basic Encoding Rules by themselves: elements of tag, length and contents."""

UNIVERSAL, APPLICATION, CONTEXT, PRIVATE = range(4)


def identifier(tag, constructed):
    """The identifier octets of a tag, a pair of class and number."""
    kind, number = tag
    first = kind << 6 | constructed << 5
    if number < 31:
        return bytes([first | number])
    return bytes([first | 31]) + base128(number)


def base128(number):
    """Seven bits in each octet, all but the last with the top bit set."""
    octets = [number & 0x7F]
    while number := number >> 7:
        octets.insert(0, number & 0x7F | 0x80)
    return bytes(octets)


def integer(number):
    """The contents of an INTEGER: the fewest octets of two's complement."""
    size = (number if number >= 0 else ~number).bit_length() // 8 + 1
    return number.to_bytes(size, "big", signed=True)


def length(size, spare=0):
    """Length octets; with `spare` ones more of them than it takes."""
    if size < 128 and not spare:
        return bytes([size])
    octets = size.to_bytes(max(1, (size.bit_length() + 7) // 8) + spare, "big")
    return bytes([0x80 | len(octets)]) + octets


def first_tag(encoding):
    """The tag that an encoding begins with."""
    number, rest = encoding[0] & 31, 1
    if number == 31:
        number = 0
        while True:
            number = number << 7 | encoding[rest] & 0x7F
            rest += 1
            if encoding[rest - 1] < 0x80:
                break
    return encoding[0] >> 6, number


class Writer:
    """Writes by the distinguished rules; with a source of chance by any that the basic ones leave."""

    def __init__(self, chance=None):
        self.chance = chance

    def likely(self, probability):
        return self.chance is not None and self.chance.random() < probability

    def element(self, tag, constructed, contents):
        if constructed and self.likely(0.3):
            return identifier(tag, True) + b"\x80" + contents + b"\0\0"
        spare = self.chance.choice([1, 2]) if self.likely(0.3) else 0
        return identifier(tag, constructed) + length(len(contents), spare) + contents

    def nested(self, tags, constructed, contents):
        """Contents in their own tag, which stands last, and in those around it."""
        for tag in reversed(tags):
            contents = self.element(tag, constructed, contents)
            constructed = True
        return contents

    def in_order(self, elements, key=None):
        """What has no order: in that of the distinguished rules, or in any."""
        if self.chance is None:
            return sorted(elements, key=key)
        return self.chance.sample(elements, len(elements))

    def string(self, number, octets, depth=0):
        """The contents of a string whose segments have this universal tag, and whether it has segments."""
        if depth == 2 or not self.likely(0.2):
            return octets, False
        pieces = []
        while octets or not pieces:
            size = self.chance.randint(0, len(octets))
            piece, constructed = self.string(number, octets[:size], depth + 1)
            pieces.append(self.element((UNIVERSAL, number), constructed, piece))
            octets = octets[size:]
        return b"".join(pieces), True
