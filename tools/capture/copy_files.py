"""Copies places of a machine, with the links and directories on the way to them."""
import os

KERNELS_OWN = {'/proc/self', '/proc/thread-self'}  # links to whoever asks


class Entry:
    def __init__(self, kind, data=b'', modified=0, executable=False):
        self.kind = kind  # 'directory', 'link', 'file'
        self.data = data  # a file's bytes, a link's text
        self.modified = modified
        self.executable = executable


class Copy:
    def __init__(self, root, sizes):
        self.root = root.rstrip('/')
        self.sizes = sizes
        self.entries = {}  # by path

    def add(self, path):
        """The entry and all above it, through every link."""
        done, pending, links = '', path.strip('/').split('/'), 0
        while pending:
            name = pending.pop(0)
            if name == '..':
                done = os.path.dirname(done).rstrip('/')
            if name in ('', '.', '..'):
                continue
            done += '/' + name
            entry = self.add_one(done)
            if entry is None or links > 40:
                return
            if entry.kind == 'link':
                links += 1
                target = os.fsdecode(entry.data)
                pending = target.split('/') + pending
                done = '' if target.startswith('/') else os.path.dirname(done).rstrip('/')

    def add_one(self, path):
        if path not in self.entries:
            entry = self.read_entry(path)
            if entry is None:
                return None
            self.entries[path] = entry
        return self.entries[path]

    def read_entry(self, path):
        place = self.root + path
        try:
            facts = os.lstat(place)
            if os.path.islink(place) and path not in KERNELS_OWN:
                return Entry('link', os.fsencode(os.readlink(place)))
            if os.path.isdir(place):
                return Entry('directory')
            return Entry('file', self.read_file(path), int(facts.st_mtime), facts.st_mode & 0o111 != 0)
        except OSError:
            return None

    def read_file(self, path):
        """As much of the file as the scanner read; nothing of one that it only looked for."""
        try:
            with open(self.root + path, 'rb') as file:
                return file.read(self.sizes[path]) if path in self.sizes else b''
        except OSError:
            return b''

    def add_list(self, directory):
        self.add(directory)
        try:
            for name in os.listdir(self.root + directory):
                self.add_one(directory.rstrip('/') + '/' + name)
        except OSError:
            pass


def own_path(path):
    """/proc/4711/stat of the scanner is /proc/self/stat of this program."""
    return path.replace('/proc/thread-self', '/proc/self')


def copy_files(root, touched):
    copy = Copy(root, {own_path(path): size for path, size in touched.sizes.items()})
    for path in sorted(touched.places | set(touched.sizes)):
        copy.add(own_path(path))
    for directory in sorted(touched.lists):
        copy.add_list(directory)
    return copy.entries
