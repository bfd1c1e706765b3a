"""The handheld's finished files, read by another's reader: what the handheld's loader looks at; and
the package of them that scripts/package_handheld.sh leaves beside their folder.

QUORVANE_HANDHELD names the folder of the build.
"""

import os
import pathlib
import re
import unittest
import zipfile

import pefile

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ.get("QUORVANE_HANDHELD", ROOT / "build/handheld"))
LIMITS = {"Quorvane.exe": 102400, "SciLexer.dll": 40960}

BITMAP, ICON, MENU, DIALOG, STRING, ACCELERATORS, RCDATA, VERSION, MANIFEST = (
    2, 3, 4, 5, 6, 9, 10, 16, 24)


def resources_of(image):
    """Returns {(type, name): bytes}."""
    found = {}
    for kind in image.DIRECTORY_ENTRY_RESOURCE.entries:
        for one in kind.directory.entries:
            data = one.directory.entries[0].data.struct
            key = (str(kind.name or kind.id), str(one.name or one.id))
            found[key] = image.get_data(data.OffsetToData, data.Size)
    return found


class Images(unittest.TestCase):
    def images(self):
        for name, limit in LIMITS.items():
            path = BUILD / name
            with self.subTest(name):
                yield name, limit, pefile.PE(str(path))

    def test_headers(self):
        for name, limit, image in self.images():
            head = image.OPTIONAL_HEADER
            dll = name.endswith(".dll")
            self.assertEqual(image.FILE_HEADER.Machine, 0x1C0)
            self.assertEqual(image.FILE_HEADER.Characteristics & 0x2003, 0x2002 if dll else 3)
            self.assertEqual((head.Subsystem, head.MajorSubsystemVersion,
                              head.MinorSubsystemVersion), (9, 3, 0))
            self.assertEqual(head.ImageBase, 0x10000000 if dll else 0x10000)
            self.assertEqual(head.SizeOfStackReserve, 0 if dll else 65536)
            self.assertLess((BUILD / name).stat().st_size, limit)
            self.assertFalse(image.get_warnings())

    # Section by section, with code where the program begins and only there.
    def test_sections(self):
        for _, _, image in self.images():
            end = 0x1000
            for section in image.sections:
                self.assertEqual(section.VirtualAddress, end)
                self.assertEqual(section.PointerToRawData % 0x200, 0)
                end = -(-(section.VirtualAddress + section.Misc_VirtualSize) // 0x1000) * 0x1000
            self.assertEqual(image.OPTIONAL_HEADER.SizeOfImage, end)
            entry = image.OPTIONAL_HEADER.AddressOfEntryPoint
            executable = [one for one in image.sections if one.Characteristics & 0x20000000]
            self.assertEqual([one.contains_rva(entry) for one in executable], [True])

    def test_resources_of_the_program(self):
        image = pefile.PE(str(BUILD / "Quorvane.exe"))
        found = resources_of(image)
        self.assertEqual(found["CEUX", "HI_RES_AWARE"], b"\1\0")
        kinds = {int(kind) for kind, _ in found if kind.isdigit()}
        self.assertLessEqual({BITMAP, MENU, DIALOG, STRING, ACCELERATORS, RCDATA, VERSION}, kinds)
        self.assertNotIn(MANIFEST, kinds)
        icons = [data for (kind, _), data in found.items() if kind == str(ICON)]
        sizes = [int.from_bytes(data[4:8], "little") for data in icons
                 if data[:4] == (40).to_bytes(4, "little")]
        self.assertEqual(sizes, [16, 32])

    def test_package(self):
        """All that a device needs, of this build; pages to read have lines that end with CR LF."""
        version = re.search(r"project\(quorvane VERSION ([0-9.]+)", (ROOT / "CMakeLists.txt")
                            .read_text(encoding="utf-8"))[1]
        name = f"quorvane-handheld-{version}"
        wanted = {file: (BUILD / file).read_bytes() for file in LIMITS}
        wanted["guide.qvx"] = (ROOT / "samples" / "guide.qvx").read_bytes()
        for file, source in (("install.txt", "handheld/install.txt"), ("licence.txt", "LICENSE")):
            wanted[file] = (ROOT / source).read_bytes().replace(b"\n", b"\r\n")
        with zipfile.ZipFile(BUILD.parent / f"{name}.zip") as package:
            found = {one.filename.removeprefix(f"{name}/"): package.read(one)
                     for one in package.infolist() if not one.is_dir()}
        self.assertEqual(sorted(wanted), sorted(found))
        for file, content in wanted.items():
            self.assertTrue(content == found[file], f"{file} is not this build's")


if __name__ == "__main__":
    unittest.main()
