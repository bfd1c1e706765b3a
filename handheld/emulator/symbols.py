"""Names of addresses, from the map files that the build leaves beside the executables: a line a
function, "ADDRESS SIZE NAME", hexadecimal, for the address that the file wants to be loaded at.
"""

import bisect


class Symbols:
    """All names of the loaded files, by address."""

    def __init__(self):
        self._functions = []  # (address, size, name), sorted

    def add(self, path, moved):
        """Reads a map file; the code lies `moved` bytes above where it says."""
        for line in path.read_text(encoding="utf-8").splitlines():
            address, size, name = line.split(maxsplit=2)
            self._functions.append((int(address, 16) + moved, int(size, 16), name))
        self._functions.sort()

    def name_of(self, address):
        """"function+offset", or None for what lies in no function."""
        at = bisect.bisect_right(self._functions, (address, 1 << 32)) - 1
        if at < 0:
            return None
        start, size, name = self._functions[at]
        return f"{name}+{address - start:x}" if address < start + max(size, 4) else None

    def address_of(self, name):
        """The address of a function; the name without its parameters is enough."""
        for address, _, full in self._functions:
            if name in (full, full.split("(")[0]):
                return address
        raise KeyError(name)
