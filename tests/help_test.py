"""Holds TSLhelp.chm, as it was built and as it is kept, against the pages that it is made of, and lets tsl check these."""
import pathlib
import re
import subprocess
import sys
import tempfile

pages, tsl, *books = sys.argv[1:]
pages = pathlib.Path(pages)


def title(page):
    return re.search(rb"<title>(.*)</title>", page)[1]


project = (pages / "TSLhelp.hhp").read_text()
listed = project[project.index("[FILES]") :].split()[1:]
there = [str(path.relative_to(pages)) for ending in ("html", "css", "png") for path in pages.rglob("*." + ending)]
assert sorted(listed) == sorted(there), set(listed) ^ set(there)
titles = {name: title((pages / name).read_bytes()) for name in listed if name.endswith(".html")}
assert len(set(titles.values())) == len(titles)


def entries(sitemap):
    return re.findall(r'"Name" value="([^"]*)">\s*<param name="Local" value="([^"]*)"', sitemap.read_text())


assert [(titles[name].decode(), name) for name in titles] == entries(pages / "TSLhelp.hhc")
assert {name.partition("#")[0] for _, name in entries(pages / "TSLhelp.hhk")} <= set(titles)
pictures = [(pages / name).read_bytes() for name in listed if name.endswith(".png")]
assert len(set(pictures)) == len(pictures), "two pictures are the same"

for book in books:
    names = subprocess.run(["enum_chmLib", book], capture_output=True, text=True, check=True).stdout
    assert "index.html" in names
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["extract_chmLib", book, folder], capture_output=True, check=True)
        folder = pathlib.Path(folder)
        held = {str(path.relative_to(folder)) for path in folder.rglob("*.html")}
        assert held == set(titles), held ^ set(titles)
        for name in [*listed, "TSLhelp.hhc", "TSLhelp.hhk"]:
            same = (folder / name).read_bytes() == (pages / name).read_bytes()
            assert same, f"{book}: {name} is not as it is in {pages}: cmake --build build/release --target keep_help"

for check in ("links", "entities", "colours"):
    end = subprocess.run([tsl, check, "--filter", "*.html", str(pages)], capture_output=True, text=True)
    assert end.returncode == 0, end.stdout + end.stderr
