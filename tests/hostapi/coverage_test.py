"""Every service of the host is tested and offered by the embedded host: a new one that is not fails here, and is told where
it is missing."""
import pathlib
import re
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
PLACES = {
    "a case for a host that lacks it": "tests/hostapi/*_test.cpp",
    "what the embedded host does for it": "host/runtime/**/*.cpp",
}


def services(text):
    """The names by which the host knows them; of a method of the host's language the name alone."""
    return [re.match(r"\w+", name)[0] for name in re.findall(r'Host(?:Entry|Method)<.*>\s+\w+\{"([^"]+)"\}', text)]


def missing(names, texts):
    return [f"{name}: add {need} to {PLACES[need]}" for name in names for need, text in texts.items() if f'"{name}' not in text]


def texts_of_the_tree():
    return {need: "".join(path.read_text() for path in sorted(ROOT.glob(pattern))) for need, pattern in PLACES.items()}


class Cases(unittest.TestCase):
    def test_every_service_is_tested_and_offered(self):
        names = [name for path in sorted((ROOT / "hostapi").glob("*.*")) for name in services(path.read_text())]
        self.assertIn("REALLockObject", names)
        self.assertIn("LenB", names)
        self.assertEqual("\n".join(missing(names, texts_of_the_tree())), "")

    def test_a_service_that_nobody_mentions_is_missed_everywhere(self):
        names = services('inline HostEntry<void(REALobject)>   REALForget{"RuntimeForget"};')
        self.assertEqual(missing(names, texts_of_the_tree()),
                         [f"RuntimeForget: add {need} to {place}" for need, place in PLACES.items()])


if __name__ == "__main__":
    unittest.main()
