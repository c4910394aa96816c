"""What stands for what: made up anew in every run, so that it cannot be computed back."""
import hashlib
import os
import re
import uuid

HEX_ID = re.compile(rb'^[0-9A-Fa-f]{8}(-[0-9A-Fa-f]{4}){3}-[0-9A-Fa-f]{12}$')
PLACEHOLDER = re.compile(rb'(?i)^(none|null|n/a|not .*|no .*|unknow.*|default.*|to be filled.*|o\.?e\.?m\.?'
                         rb'|(.)\2*|0?12345678\w*|(system|base board|chassis) serial number)$')
SHORTEST = 4     # what is shorter stands in half of all files by chance
ANYWHERE = 8     # as long as that it is replaced inside longer words, too
NAME_FILES = {'/proc/sys/kernel/hostname', '/etc/hostname', '/etc/hosts', '/etc/mailname'}


def compact(value):
    return re.sub(rb'[^0-9a-f]', b'', value.lower())


def swapped(data):
    """As disks keep text: in words of two characters, the second one first."""
    return b''.join(data[i:i + 2][::-1] for i in range(0, len(data), 2))


def extended(mac):
    """The half of an IPv6 address that is made of it."""
    return bytes([mac[0] ^ 2]) + mac[1:3] + b'\xff\xfe' + mac[3:]


def longest_first(values):
    return b'|'.join(re.escape(value) for value in sorted(values, key=len, reverse=True))


class Replacements:
    def __init__(self):
        self.key = os.urandom(16)
        self.fakes = {}
        self.names = {}
        self.pattern = None

    def random(self, value):
        return hashlib.shake_256(self.key + value).digest(len(value))

    def fake_text(self, value):
        """Digits for digits, letters for letters, everything else as it is."""
        fake = bytearray(value)
        for i, number in enumerate(self.random(value)):
            for first, count in ((b'0', 10), (b'A', 26), (b'a', 26)):
                if first[0] <= fake[i] < first[0] + count:
                    fake[i] = first[0] + number % count
                    break
        return bytes(fake)

    def fake_hex(self, value):
        """The same digits whatever stands between them."""
        digits = (b'%x' % (number % 16) for number in self.random(compact(value)))
        return b''.join(next(digits) if char in b'0123456789abcdef' else bytes([char]) for char in value.lower())

    def add_text(self, value):
        if HEX_ID.match(value):
            self.add_hex(value)
        elif len(value) >= SHORTEST and not PLACEHOLDER.match(value):
            self.fakes.setdefault(value, self.fake_text(value))

    def add_hex(self, value):
        """In lower and upper case, without what stands between the digits, and as bytes."""
        digits = compact(value)
        if len(set(digits)) < 3:
            return  # all zeros, all ones
        fake = self.fake_hex(value)
        for old, new in ((value.lower(), fake), (digits, compact(fake))):
            self.fakes.update({old: new, old.upper(): new.upper()})
        if len(digits) % 2 == 0:
            self.fakes[bytes.fromhex(digits.decode())] = bytes.fromhex(compact(fake).decode())

    def add_mac(self, value):
        old = bytes.fromhex(compact(value).decode())
        if len(set(old)) < 2:
            return  # none, or everybody's
        fake = self.random(old)
        new = bytes([old[0] & 3 | fake[0] & 0xfc]) + fake[1:]
        for before, after in ((old, new), (extended(old), extended(new))):
            for separator in (':', '-', ''):
                text, made_up = (data.hex(separator) if separator else data.hex() for data in (before, after))
                self.fakes[text.encode()] = made_up.encode()
                self.fakes[text.upper().encode()] = made_up.upper().encode()

    def add_dmi_uuid(self, raw):
        """Its first three fields are little-endian, which not every firmware knows."""
        if len(set(raw)) < 3:
            return
        self.add_hex(str(uuid.UUID(bytes=raw)).encode())
        text = str(uuid.UUID(bytes_le=raw)).encode()
        self.add_hex(text)
        self.fakes[raw] = uuid.UUID(self.fake_hex(text).decode()).bytes_le

    def add_swapped(self, field):
        text = swapped(field)
        serial = text.strip()
        self.add_text(serial)
        if serial in self.fakes:
            self.fakes[field] = swapped(text.replace(serial, self.fakes[serial]))

    def add_name(self, value):
        name = value.split(b'.')[0]
        if name and name != b'localhost':
            self.names[name] = self.fake_text(name)
            if len(name) >= SHORTEST:
                self.fakes[name] = self.names[name]

    def keep(self, value):
        for known in (value, value.lower(), value.upper(), compact(value)):
            self.fakes.pop(known, None)

    def apply(self, path, data):
        if self.pattern is None:
            short = longest_first(value for value in self.fakes if len(value) < ANYWHERE)
            alone = rb'(?<![0-9A-Za-z])(?:' + short + rb')(?![0-9A-Za-z])' if short else rb'(?!)'
            anywhere = longest_first(value for value in self.fakes if len(value) >= ANYWHERE) or rb'(?!)'
            self.pattern = re.compile(anywhere + rb'|' + alone, re.DOTALL)
        data = self.pattern.sub(lambda match: self.fakes[match.group()], data)
        if path in NAME_FILES:
            for name, fake in self.names.items():
                data = re.sub(rb'\b' + re.escape(name) + rb'\b', fake, data)
        return data
