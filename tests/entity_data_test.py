"""Holds the two entity data files against Python's own table of the HTML 4 entities."""
import pathlib
import sys
from html.entities import codepoint2name, name2codepoint

folder = pathlib.Path(sys.argv[1])


def lines(name):
    content = (folder / name).read_bytes()
    assert content.endswith(b"\r\n") and content.count(b"\n") == content.count(b"\r\n"), name
    return content.decode("ascii").split("\r\n")[:-1]


table = [line.split(",") for line in lines("alphatg1.dat")]
for name, value in table:
    character = bytes([int(value.removeprefix("#"))]).decode("windows-1252")
    assert value.startswith("#") and name2codepoint[name] == ord(character), (name, value)
latin_1 = [codepoint2name[code] for code in range(160, 256)]
assert [name for name, _ in table[:96]] == latin_1
windows = [bytes([code]).decode("windows-1252", "ignore") for code in range(128, 160)]
assert {name for name, _ in table[96:]} == {codepoint2name.get(ord(c)) for c in windows if c} - {None}
assert len({name for name, _ in table}) == len(table) <= 131

doubtful = lines("alphatg2.dat")
left = set(name2codepoint) - {name for name, _ in table} - {"lt", "gt", "quot", "amp"}
assert len(doubtful) == len(left) <= 201 and set(doubtful) == left
