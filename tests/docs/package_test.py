"""The archive for users: the same bytes each time, and nothing in it that is wrong. The site is a stand-in here: the real one
is looked over when it is made."""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
import zipfile

import support
import package


class Cases(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        self.dylib = self.folder / "NSUserDefaults.dylib"
        self.dylib.write_bytes(b"\xce\xfa\xed\xfe a library")
        self.dylib.with_suffix(".map").write_text("# Sections\n", encoding="utf-8")
        self.site = self.folder / "site"
        for path in ("index.html", "members/integerForKey.html", "_static/reference.css"):
            (self.site / path).parent.mkdir(parents=True, exist_ok=True)
            (self.site / path).write_text(path, encoding="utf-8")
        self.version = (support.ROOT / "VERSION").read_text(encoding="utf-8").strip()

    def make(self, name="dist"):
        return package.make(self.dylib, self.site, self.folder / name)

    def unpack(self):
        with zipfile.ZipFile(self.make()) as archive:
            archive.extractall(self.folder / "unpacked")
        return self.folder / "unpacked" / f"NSUserDefaults-{self.version}"

    def change(self, archive, change):
        """The archive with other contents: `change` gets a name and bytes, and gives bytes, or None to leave it out."""
        changed = archive.with_name("changed") / archive.name
        changed.parent.mkdir()
        with zipfile.ZipFile(archive) as old, zipfile.ZipFile(changed, "w") as new:
            for name in old.namelist():
                content = change(name.partition("/")[2], old.read(name))
                if content is not None:
                    new.writestr(name, content)
        return changed

    def test_it_is_named_after_the_version(self):
        self.assertEqual(self.make().name, f"NSUserDefaults-{self.version}.zip")

    def test_the_command_line_tool_has_the_same_version(self):
        shown = subprocess.run([os.environ["PLUGHOST"], "--version"], check=True, stdout=subprocess.PIPE, encoding="utf-8")
        self.assertEqual(shown.stdout.strip(), f"plughost {self.version}")

    def test_two_archives_have_the_same_bytes(self):
        first = self.make("first").read_bytes()
        for path in self.site.rglob("*"):
            os.utime(path, (time.time() - 86400 * 365,) * 2)
        self.dylib.chmod(0o600)
        umask = os.umask(0o077)
        self.addCleanup(os.umask, umask)
        self.assertEqual(self.make("second").read_bytes(), first)

    def test_a_user_finds_everything(self):
        folder = self.unpack()
        files = {path.relative_to(folder).as_posix() for path in folder.rglob("*") if path.is_file()}
        self.assertLessEqual({"NSUserDefaults.dylib", "NSUserDefaults.map", "README.md", "INSTALL.md", "CHANGELOG.md", "MANIFEST.sha256",
                              "reference/index.html", "reference/members/integerForKey.html",
                              "examples/first_run.xojo_script", "examples/first_run.expected"}, files)
        for name in ("NSUserDefaults.dylib", "NSUserDefaults.map"):
            self.assertEqual((folder / name).read_bytes(), (self.folder / name).read_bytes())

    def test_the_manifest_verifies_with_the_command_that_the_instructions_give(self):
        folder = self.unpack()
        instructions = (folder / "INSTALL.md").read_text(encoding="utf-8")
        self.assertIn("shasum -a 256 -c MANIFEST.sha256", instructions)
        self.assertIn("`sha256sum -c MANIFEST.sha256`", instructions)
        command = ["sha256sum", "--strict", "--quiet", "-c", "MANIFEST.sha256"]
        self.assertEqual(subprocess.run(command, cwd=folder, stdout=subprocess.DEVNULL).returncode, 0)
        (folder / "NSUserDefaults.dylib").write_bytes(b"another library")
        ended = subprocess.run(command, cwd=folder, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.assertNotEqual(ended.returncode, 0)

    def test_a_good_archive_has_no_problems(self):
        self.assertEqual(package.problems(self.make()), [])

    def test_a_changed_file_is_found(self):
        changed = self.change(self.make(), lambda name, content: content + b" " * (name == "CHANGELOG.md"))
        self.assertEqual(package.problems(changed), ["CHANGELOG.md has another checksum than in the manifest"])

    def test_a_missing_file_is_found(self):
        changed = self.change(self.make(), lambda name, content: None if name == "NSUserDefaults.dylib" else content)
        self.assertEqual(package.problems(changed), ["NSUserDefaults.dylib is in the manifest only"])

    def test_a_file_that_the_manifest_lacks_is_found(self):
        def change(name, content):
            return re.sub(rb".*  INSTALL\.md\n", b"", content) if name == "MANIFEST.sha256" else content

        self.assertEqual(package.problems(self.change(self.make(), change)), ["INSTALL.md is not in the manifest"])

    def test_a_dead_link_is_found(self):
        contents = package.readme("# Name\n\n[gone](docs/gone.md)\n\n" + "".join(
            f"## {name}\n\nText.\n\n" for name in package.README_SECTIONS), "").encode()
        changed = self.change(self.make(), lambda name, content: contents if name == "README.md" else content)
        self.assertIn("README.md: docs/gone.md leads nowhere", package.problems(changed))

    def test_without_a_library_there_is_no_archive(self):
        self.dylib.unlink()
        ended = subprocess.run([sys.executable, str(support.ROOT / "tools/package/package.py"), "make", str(self.dylib),
                                str(self.site), str(self.folder / "dist")], stderr=subprocess.PIPE, encoding="utf-8")
        self.assertEqual(ended.returncode, 1)
        self.assertIn("NSUserDefaults.dylib", ended.stderr)
        self.assertFalse((self.folder / "dist").exists())


if __name__ == "__main__":
    unittest.main()
