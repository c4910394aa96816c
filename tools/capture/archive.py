"""Writes the copy of a machine as a compressed archive."""
import io
import os
import tarfile

KINDS = {'directory': tarfile.DIRTYPE, 'link': tarfile.SYMTYPE, 'file': tarfile.REGTYPE}


def write_archive(name, entries):
    base = os.path.basename(name)
    with tarfile.open(name + '.tar.xz', 'w:xz') as archive:
        for path, entry in sorted(entries.items()):
            member = tarfile.TarInfo(base + path)
            member.type = KINDS[entry.kind]
            member.mode = 0o755 if entry.kind == 'directory' or entry.executable else 0o644
            member.mtime = entry.modified
            if entry.kind == 'link':
                member.linkname = os.fsdecode(entry.data)
            member.size = len(entry.data) if entry.kind == 'file' else 0
            archive.addfile(member, io.BytesIO(entry.data) if entry.kind == 'file' else None)
