"""What identifies a machine in firmware tables, pages of disks and data of monitors."""
DMI_SERIALS = {1: (0x07,), 2: (0x07, 0x08), 3: (0x07, 0x08), 4: (0x20, 0x21), 17: (0x18, 0x19), 39: (0x08, 0x09)}
DMI_UUID = 8
EDID_SERIAL = slice(12, 16)
EDID_DESCRIPTORS = (54, 72, 90, 108)
EDID_BLOCK = 128


def dmi_structures(table):
    at = 0
    while at + 4 <= len(table) and table[at + 1] >= 4:
        end = at + table[at + 1]
        texts_end = table.find(b'\0\0', end)
        if texts_end < 0:
            return
        yield table[at:end], table[end:texts_end].split(b'\0')
        at = texts_end + 2


def collect_dmi(table, secrets):
    for data, texts in dmi_structures(table):
        for place in DMI_SERIALS.get(data[0], ()):
            number = data[place] if place < len(data) else 0
            if 0 < number <= len(texts):
                secrets.add_text(texts[number - 1].strip())
        if data[0] == 1 and len(data) >= DMI_UUID + 16:
            secrets.add_dmi_uuid(data[DMI_UUID:DMI_UUID + 16])


def collect_designators(page, secrets):
    at = 4
    while at + 4 <= len(page):
        value = page[at + 4:at + 4 + page[at + 3]]
        if page[at] & 0x0f == 1:  # binary
            secrets.add_hex(value.hex().encode())
        else:
            secrets.add_text(value.strip(b' \0'))
        at += 4 + page[at + 3]


def collect_binary(path, data, secrets):
    if path.endswith('/dmi/tables/DMI') or '/dmi/entries/' in path and path.endswith('/raw'):
        collect_dmi(data, secrets)
    elif path.endswith('/vpd_pg80'):
        secrets.add_text(data[4:].strip(b' \0'))
    elif path.endswith('/vpd_pg83'):
        collect_designators(data, secrets)
    elif path.endswith('/vpd_pg89'):
        secrets.add_swapped(data[60 + 20:60 + 40])  # words 10 to 19 of what the disk says of itself


def blank_edid(data, secrets):
    if len(data) < EDID_BLOCK:
        return data
    edid = bytearray(data)
    wrong = sum(edid[:EDID_BLOCK]) % 256
    if any(edid[EDID_SERIAL]):
        edid[EDID_SERIAL] = secrets.random(bytes(edid[EDID_SERIAL]))
    for at in EDID_DESCRIPTORS:
        if edid[at:at + 4] == b'\0\0\0\xff':
            edid[at + 5:at + 18] = secrets.fake_text(bytes(edid[at + 5:at + 18]))
    edid[EDID_BLOCK - 1] = (edid[EDID_BLOCK - 1] + wrong - sum(edid[:EDID_BLOCK])) % 256  # as right as it was
    return bytes(edid)
