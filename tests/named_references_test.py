"""Holds the table of named references against Python's own table of the HTML standard."""
import ast
import pathlib
import re
import sys
from html.entities import html5

source = pathlib.Path(sys.argv[1]).read_text("ascii")
text = "".join(re.findall(r'^    "(.*)";?$', source, re.MULTILINE))
entries = ast.literal_eval(f'b"{text}"').decode().split(" ")
assert entries.pop() == ""

table, names = {}, []
for entry in entries:
    name, mark, characters = re.fullmatch(r"([A-Za-z0-9]+)([,;])(.+)", entry, re.DOTALL).groups()
    names.append(name)
    table[name + ";"] = characters
    if mark == ",":
        table[name] = characters
assert names == sorted(set(names))
assert table == html5 and len(table) == 2231, {name for name in table | html5 if table.get(name) != html5.get(name)}
