"""plughost without a command, at a terminal: what is typed, Ctrl-C, the history, and blocks that are mended."""
import os
import pathlib
import pty
import re
import select
import signal
import tempfile
import termios
import time
import unittest

SECONDS = 20


class Person:
    """Types into plughost, and reads what it shows."""

    def __init__(self, home):
        self.shown = ""
        self.process, self.terminal = pty.fork()
        if self.process == 0:
            os.environ.update(HOME=home, TERM="dumb")
            os.environ.pop("XDG_STATE_HOME", None)
            command = [os.environ["PLUGHOST"], "--plugin", os.environ["PLUGIN"], "--defaults-dir", home + "/defaults"]
            os.execv(command[0], command)

    def type(self, text):
        os.write(self.terminal, text.encode())

    def sees(self, text):
        """Waits for a text behind what was seen before; answers everything in front of it."""
        end = time.monotonic() + SECONDS
        while text not in self.shown:
            ready = select.select([self.terminal], [], [], max(end - time.monotonic(), 0))[0]
            try:
                more = os.read(self.terminal, 4096) if ready else b""
            except OSError:  # the other side is gone
                more = b""
            if not more:
                raise AssertionError(f"{text!r} does not follow in {self.shown!r}")
            self.shown += re.sub(r"\x1b\[[0-9;?]*[A-Za-z]|\r", "", more.decode("utf-8", "replace"))
        before, _, self.shown = self.shown.partition(text)
        return before

    def enters(self, prompt, line):
        self.sees(prompt)
        self.type(line + "\n")

    def leaves(self):
        """Presses Ctrl-D at the prompt; answers the program's exit status."""
        self.sees("> ")
        self.type("\x04")
        self.sees("^D\n")
        _, status = os.waitpid(self.process, 0)
        os.close(self.terminal)
        return os.waitstatus_to_exitcode(status)

    def waits_until_keys_are_the_terminals(self, expected):
        """Whether the terminal takes keys such as Ctrl-D for itself, as it does while no line is typed."""
        end = time.monotonic() + SECONDS
        while bool(termios.tcgetattr(self.terminal)[3] & termios.ICANON) != expected:
            if time.monotonic() > end:
                raise AssertionError("the terminal still takes keys" if not expected else "nothing runs")
            time.sleep(0.01)

    def goes(self):
        """Closes the window, whatever runs in it."""
        try:
            os.kill(self.process, signal.SIGKILL)
            os.waitpid(self.process, 0)
        except (ProcessLookupError, ChildProcessError):
            pass


class Cases(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.home = self.folder.name
        self.person = Person(self.home)

    def tearDown(self):
        self.person.goes()
        self.folder.cleanup()

    def test_lines_are_numbered_and_values_printed(self):
        self.person.enters("1> ", "For i As Integer = 1 To 2")
        self.person.enters("2. ", "Print \"round \" + Str(i)")
        self.person.enters("3. ", "Next")
        self.person.sees("round 1\nround 2\n")
        self.person.enters("4> ", "6 * 7")
        self.person.sees("42\n")
        self.assertEqual(self.person.leaves(), 0)

    def test_the_terminal_is_taken_over_before_the_prompt_is_shown(self):
        sign = pathlib.Path(self.home, "sign")
        self.person.enters("1> ", f'Dim sign As FolderItem = GetFolderItem("{sign}")')
        self.person.enters("2> ", "While Not sign.Exists")
        self.person.enters("3. ", "Wend")
        self.person.waits_until_keys_are_the_terminals(True)  # the program runs
        terminal = os.open(f"/proc/{self.person.process}/fd/0", os.O_RDWR | os.O_NOCTTY)
        termios.tcflow(terminal, termios.TCOOFF)  # the next prompt stays where it is
        sign.touch()
        self.person.waits_until_keys_are_the_terminals(False)
        termios.tcflow(terminal, termios.TCOON)
        os.close(terminal)
        self.person.sees("4")
        self.assertEqual(self.person.leaves(), 0)

    def test_ctrl_c_leaves_the_line(self):
        self.person.sees("1> ")
        self.person.type("Print \"never\"\x03")
        self.person.sees("^C\n")
        self.person.enters("> ", "Print \"on\" + \"ward\"")
        self.assertNotIn("never\n", self.person.sees("onward\n"))
        self.assertEqual(self.person.leaves(), 0)

    def test_ctrl_c_leaves_the_block(self):
        self.person.enters("1> ", "If True Then")
        self.person.sees("2. ")
        self.person.type("\x03")
        self.person.enters("> ", "Print \"on\" + \"ward\"")
        self.person.sees("onward\n")

    def test_ctrl_c_ends_the_running_program_and_keeps_the_variables(self):
        self.person.enters("1> ", "Dim n As Integer = 41")
        self.person.enters("2> ", "While True")
        self.person.enters("3. ", "Wend")
        time.sleep(0.3)
        self.person.type("\x03")
        self.person.sees("stopped at input:2:1")
        self.person.enters("> ", "n + 1")
        self.person.sees("42\n")
        self.assertEqual(self.person.leaves(), 0)

    def test_a_slip_in_a_block_can_be_mended(self):
        self.person.enters("1> ", "For i As Integer = 1 To 1")
        self.person.enters("2. ", "Prnt \"mended\"")
        self.person.enters("3. ", "Next")
        self.person.sees("input:2:1: there is nothing named \"Prnt\"; did you mean")
        self.person.sees("2. Prnt \"mended\"")  # the line stands there again
        self.person.type("\x01\x06\x06i\x06\x06\n")  # to its start, two to the right, an i
        self.person.sees("mended\n")
        self.person.enters("4> ", "1 + 1")
        self.person.sees("2\n")

    def test_a_slip_of_the_grammar_is_mended_on_its_line(self):
        self.person.enters("1> ", "If True Then")
        self.person.enters("2. ", "Print )")
        self.person.sees("input:2:7: expected a value, found \")\"")
        self.person.sees("2. Print )")
        self.person.type("\x7f\"mended\"\n")
        self.person.enters("3. ", "End If")
        self.person.sees("mended\n")

    def test_the_history_is_kept_line_by_line(self):
        self.person.enters("1> ", "Print \"first\"")
        self.person.sees("first\n2> ")
        history = pathlib.Path(self.home, ".local/state/plughost/history")
        self.assertIn("first", history.read_text())
        self.person.goes()
        self.person = Person(self.home)
        self.person.sees("1> ")
        self.person.type("\x10")  # the line before
        self.person.sees("Print \"first\"")
        self.person.type("\n")
        self.person.sees("first\n")

    def test_help_and_vars(self):
        self.person.enters("1> ", "help")
        self.person.sees("help NAME")
        self.person.enters("2> ", "help integerForKey")
        self.person.sees("Gives the value under a key as a whole number of 32 bits.")
        self.person.enters("3> ", "Dim answer As Integer = 42")
        self.person.enters("4> ", "vars")
        self.person.sees("answer As Integer = 42\n")

    def test_tab_completes_names(self):
        self.person.enters("1> ", "Dim d As NSUserDefaultsKTZ")
        self.person.sees("2> ")
        self.person.type("d.intege\t")
        self.person.sees("d.integerForKey")

    def test_characters_outside_of_ascii_can_be_typed(self):
        self.person.enters("1> ", "\"grüß \" + \"dich\"")
        self.person.sees("\"grüß dich\"\n")


if __name__ == "__main__":
    unittest.main()
