"""Holds what the desktop gets to know of the program against itself and against the desktop's own rules."""
import configparser
import re
import shutil
import subprocess
import sys
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

TOP = Path(__file__).resolve().parents[2]
BUILT = Path(sys.argv.pop()) if len(sys.argv) > 1 else TOP / "build/dev/packaging"


def application_id():
    text = (TOP / "src/shell/application_id.h").read_text()
    return re.search(r'applicationID = QStringLiteral\("([^"]+)"\)', text).group(1)


ID = application_id()


def check(*command):
    """What a validator prints, with its exit code; None where it is not installed."""
    if not shutil.which(command[0]):
        return None
    done = subprocess.run([str(part) for part in command], capture_output=True, text=True)
    return done.returncode, done.stdout + done.stderr


def desktop_entry():
    parser = configparser.ConfigParser(interpolation=None, delimiters=("=",))
    parser.optionxform = str
    parser.read(TOP / f"packaging/{ID}.desktop")
    return parser


class DesktopEntry(unittest.TestCase):
    def test_is_valid(self):
        result = check("desktop-file-validate", "--no-hints", TOP / f"packaging/{ID}.desktop")
        if result:
            self.assertEqual(result, (0, ""))

    def test_carries_the_one_id(self):
        entry = desktop_entry()["Desktop Entry"]
        self.assertEqual(entry["Icon"], ID)
        self.assertEqual(entry["StartupWMClass"], ID)
        self.assertEqual(entry["DBusActivatable"], "true")

    def test_offers_only_actions_that_the_program_knows(self):
        entry = desktop_entry()
        known = (TOP / "src/shell/opened_addresses.cpp").read_text()
        names = [name for name in entry["Desktop Entry"]["Actions"].split(";") if name]
        self.assertTrue(names)
        for name in names:
            self.assertIn(f'"{name}"', known)
            self.assertEqual(entry[f"Desktop Action {name}"]["Exec"], f"sorvan-studio --action={name}")

    def test_takes_the_links_of_the_programs_own(self):
        entry = desktop_entry()["Desktop Entry"]
        self.assertEqual(entry["MimeType"], "x-scheme-handler/sorvan;")
        self.assertIn("%U", entry["Exec"])


class BusService(unittest.TestCase):
    def test_starts_the_program_under_its_own_name(self):
        parser = configparser.ConfigParser(interpolation=None)
        parser.optionxform = str
        parser.read(BUILT / f"{ID}.service")
        service = parser["D-BUS Service"]
        self.assertEqual(service["Name"], ID)
        self.assertEqual(service["Exec"], "/usr/bin/sorvan-studio")


class CatalogueEntry(unittest.TestCase):
    def setUp(self):
        self.path = BUILT / f"{ID}.metainfo.xml"

    def test_is_valid(self):
        result = check("appstreamcli", "validate", "--no-net", "--no-color", self.path)
        if result:
            self.assertEqual(result[0], 0, result[1])
            self.assertNotRegex(result[1], r"(?m)^[EW]:")

    def test_carries_the_one_id_and_the_version(self):
        tree = ElementTree.parse(self.path).getroot()
        self.assertEqual(tree.findtext("id"), ID)
        self.assertEqual(tree.findtext("icon"), ID)
        self.assertEqual(tree.findtext("launchable"), f"{ID}.desktop")
        self.assertEqual(tree.findtext("provides/dbus"), ID)
        version = re.search(r"project\(SorvanStudio VERSION (\S+)", (TOP / "CMakeLists.txt").read_text()).group(1)
        self.assertEqual(tree.find("releases/release").get("version"), version)


class Icons(unittest.TestCase):
    def test_are_drawn_at_every_size_of_the_theme(self):
        for size in (16, 22, 24, 32, 36, 48, 64, 72, 96, 128, 192, 256, 512):
            data = (BUILT / f"icons/{size}.png").read_bytes()
            self.assertEqual(data[:8], b"\x89PNG\r\n\x1a\n")
            self.assertEqual(int.from_bytes(data[16:20], "big"), size)
            self.assertEqual(int.from_bytes(data[20:24], "big"), size)
            # A bare surface would pack into a handful of bytes.
            self.assertGreater(len(data), 200)

    def test_come_as_a_drawing_too(self):
        tree = ElementTree.parse(TOP / "src/shell/views/resources/sorvan-mark.svg").getroot()
        self.assertEqual(tree.get("viewBox"), "0 0 32 32")


class Manual(unittest.TestCase):
    def test_page_has_no_mistake(self):
        result = check("man", "--warnings", "--local-file", "-Tutf8", "-Z", BUILT / "sorvan-studio.1")
        if result:
            self.assertEqual(result[0], 0)
            self.assertNotIn("warning", result[1])

    def test_page_names_every_action(self):
        page = (BUILT / "sorvan-studio.1").read_text().replace("\\-", "-")
        for name in re.findall(r'name == QLatin1StringView\("([a-z-]+)"\)',
                               (TOP / "src/shell/opened_addresses.cpp").read_text()):
            self.assertIn(name, page)


class Package(unittest.TestCase):
    def test_depends_on_what_the_program_loads_while_it_runs(self):
        config = (BUILT.parent / "CPackConfig.cmake").read_text()
        depends = re.search(r'CPACK_DEBIAN_PACKAGE_DEPENDS "([^"]*)"', config).group(1).split(", ")
        lines = (TOP / "cmake/packages.txt").read_text().split("[run]")[1].split("[")[0].split()
        self.assertEqual(depends, lines)

    def test_names_the_licences(self):
        note = (BUILT / "copyright").read_text()
        self.assertIn("License: GPL-2+", note)
        self.assertIn("ISC", note)
        self.assertNotIn("@", note.replace("studio@", ""))


if __name__ == "__main__":
    unittest.main()
