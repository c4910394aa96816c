"""What a scan asked of the machine, out of what strace wrote of it."""
import re

CALL = re.compile(r'^(\d+) +(\w+)\((.*)\) += (-?\d+)')
DESCRIPTOR = re.compile(r'^(?:AT_FDCWD|\d+)<(.*?)>(?:, "((?:[^"\\]|\\.)*)")?')
WITH_A_PATH = {'open', 'openat', 'openat2', 'statx', 'newfstatat', 'readlinkat'}
WHOLE = 1 << 26


class Touched:
    def __init__(self):
        self.places = set()  # paths that were asked for, links and all
        self.lists = set()   # directories that were listed
        self.sizes = {}      # how many bytes were read of which file, its links resolved


def unescape(text):
    return text.encode().decode('unicode_escape').encode('latin-1').decode('utf-8', 'surrogateescape')


def inside(path, root):
    """The path below the root, or None when it is elsewhere."""
    if root == '/':
        return path
    return path[len(root):] or '/' if path == root or path.startswith(root + '/') else None


def read_call(name, arguments, result, root, touched):
    match = DESCRIPTOR.match(arguments)
    path = match and inside(unescape(match.group(1)), root)
    if path is None or path.startswith('/proc/self/fd/'):
        return
    if name == 'getdents64':
        touched.lists.add(path)
    elif name == 'read' and result > 0:
        touched.sizes[path] = touched.sizes.get(path, 0) + result
    elif name == 'pread64':
        touched.sizes[path] = WHOLE
    elif name in WITH_A_PATH and match.group(2):
        touched.places.add(path.rstrip('/') + '/' + unescape(match.group(2)))


def read_trace(trace, config, root, touched):
    """Adds the scanner's calls after it has read its configuration."""
    started = False
    with open(trace, encoding='utf-8', errors='surrogateescape') as lines:
        for line in lines:
            started = started or config in line and 'openat(' in line
            match = CALL.match(line)
            if started and match:
                process, name, arguments, result = match.groups()
                arguments = arguments.replace(f'</proc/{process}/', '</proc/self/')
                read_call(name, arguments, int(result), root, touched)
