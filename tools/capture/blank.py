"""Replaces what identifies a machine, and drops what must not leave it."""
import re

from binary import blank_edid, collect_binary
from secrets_map import Replacements

MAC = re.compile(rb'(?<![0-9A-Fa-f:])(?:[0-9A-Fa-f]{2}:){5,19}[0-9A-Fa-f]{2}(?![0-9A-Fa-f:])')
UUID = re.compile(rb'(?<![0-9A-Za-z])[0-9A-Fa-f]{8}(?:-[0-9A-Fa-f]{4}){3}-[0-9A-Fa-f]{12}(?![0-9A-Za-z])')
PARTITION_TYPE = re.compile(rb'ID_PART_ENTRY_TYPE=(\S+)')
FIRMWARE_VARIABLES = b'8be4df61-93ca-11d2-aa0d-00e098032b8c'  # whose they are, the same everywhere

# Files that hold a serial number and nothing else.
SERIAL_FILE = re.compile(r'/(serial|serial_number|serial-number|system-id|host-serial|uniq|unique_id|subsysnqn'
                         r'|(product|board|chassis)_(serial|asset_tag))$')
# Lines that hold one, wherever they stand.
SERIAL_LINE = re.compile(
    rb'^(?:E:)?(?:ID_SERIAL(?:_SHORT)?|ID_USB_SERIAL(?:_SHORT)?|ID_SCSI_SERIAL|ID_FS_UUID(?:_ENC)?|ID_PART_TABLE_UUID'
    rb'|ID_PART_ENTRY_UUID|PARTUUID|HID_UNIQ|POWER_SUPPLY_SERIAL_NUMBER|serial_number|Sequence Code|Serial)'
    rb'\s*[=:][ \t]*(\S.*?)\s*$', re.MULTILINE)
WORLD_WIDE_NAME = re.compile(rb'(?<![0-9A-Za-z])(?:naa\.|eui\.|0x|mpath-)([0-9a-fA-F]{16,33})(?![0-9A-Za-z])')
MAPPED_DEVICE = re.compile(rb'(?:LVM-|CRYPT-\w+-)(\w{32,64})')
HOST_NAME_FILE = re.compile(r'^/(proc/sys/kernel/hostname|etc/hostname)$')
HASH = re.compile(rb'^([^:\n]*:)(\$\w+\$|)([^:\n]*)', re.MULTILINE)


def collect(path, data, secrets):
    for mac in MAC.findall(data):
        secrets.add_mac(mac)
    for uuid in UUID.findall(data):
        secrets.add_hex(uuid)
    for pattern in (SERIAL_LINE, MAPPED_DEVICE):
        for value in pattern.findall(data):
            secrets.add_text(value)
    for name in WORLD_WIDE_NAME.findall(data):
        secrets.add_hex(name)
    if SERIAL_FILE.search(path):
        secrets.add_text(data.strip(b'\0 \t\n'))
    if path == '/etc/machine-id':
        secrets.add_hex(data.strip())
    if HOST_NAME_FILE.match(path):
        secrets.add_name(data.strip())
    collect_binary(path, data, secrets)


def drop_passwords(data):
    """How a password is kept is told by the hash's beginning; of the rest only "locked" and "none" matter."""
    def blanked(match):
        kept = match.group(3) if set(match.group(3)) <= set(b'!*x') else b'x' * len(match.group(3))
        return match.group(1) + match.group(2) + kept
    return HASH.sub(blanked, data)


def prepared(path, data):
    if path in ('/etc/shadow', '/etc/gshadow'):
        return drop_passwords(data)
    if path == '/proc/1/environ':
        return b''.join(row + b'\0' for row in data.split(b'\0') if row.startswith(b'container='))
    if path == '/etc/hostid':
        return b'\x01\x02\x03\x04'[:len(data)]
    if path == '/etc/cups/printers.conf':
        return re.sub(rb'(://)[^/@\s]+@', rb'\1user@', data)
    return data


def blank(entries):
    secrets = Replacements()
    for path, entry in entries.items():
        if entry.kind == 'file':
            entry.data = prepared(path, entry.data)
            collect(path, entry.data, secrets)
    for data in [entry.data for entry in entries.values()]:
        for value in PARTITION_TYPE.findall(data):
            secrets.keep(value)
    secrets.keep(FIRMWARE_VARIABLES)
    for path, entry in entries.items():
        entry.data = secrets.apply(path, entry.data)
        if path.endswith('/edid'):
            entry.data = blank_edid(entry.data, secrets)
    return {secrets.apply('', path.encode(errors='surrogateescape')).decode(errors='surrogateescape'): entry
            for path, entry in entries.items()}
