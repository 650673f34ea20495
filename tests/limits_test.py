"""Runs every function of tsl at the limits of the machine and of file names: each run ends in time with a result
or an error that names the file and the reason, and nothing is lost. Usage: limits_test.py TSL"""
import os
import pathlib
import re
import resource
import shutil
import subprocess
import sys
import tempfile
import time

TSL = sys.argv[1]
LONG = bool(os.environ.get("TESSARIL_LONG"))
VERY_LONG = LONG and int(os.environ["TESSARIL_LONG"]) >= 60  # minutes
SANITIZED = b"__asan_init" in pathlib.Path(TSL).read_bytes()
SCALE = 1 if LONG else 20  # the short form is so many times smaller
FUNCTIONS = {
    "links": ["links"],
    "links today": ["links", "--rules", "today"],
    "links mended": ["links", "--rules", "today", "--yes"],
    "entities": ["entities"],
    "entities mended": ["entities", "--yes"],
    "external": ["external"],
    "search": ["search", "hit"],
    "replace": ["replace", "hit", "new", "--yes"],
    "colours": ["colours"],
}
WRITES = {"links mended", "entities mended", "replace"}
QUESTION = b"tsl: Performing this function without manual control may cause unwanted results!\nDo you really want to continue?\n"
ASKS_MEMORY = {"Output text too long", "Cannot allocate memory"}
scratch = os.fsencode(tempfile.mkdtemp())
os.environb[b"XDG_DATA_HOME"] = scratch + b"/user"
site = scratch + b"/site"
failed = []
slowest = [0.0, ""]


class End:
    def __init__(self, function, limits=(), seconds=120, at=site):
        begin = time.monotonic()

        def limit():
            for which, value in limits:
                resource.setrlimit(which, (value, value))

        command = [TSL, "undo", "--yes"] if function == "undo" else [TSL, *FUNCTIONS[function], at]
        end = subprocess.run(command, capture_output=True, timeout=None if SANITIZED else seconds, preexec_fn=limit)
        self.took = time.monotonic() - begin
        self.status, self.out, self.err = end.returncode, end.stdout, end.stderr
        if function == "entities mended":  # is asked whether it is meant
            expect(self.err.startswith(QUESTION), function, self.err)
            self.err = self.err.removeprefix(QUESTION)
        self.what = f"{function}: status {self.status}, {self.took:.1f} s, {self.err[:300]!r}"
        if self.took > slowest[0]:
            slowest[:] = [self.took, self.what]


def expect(holds, *shown):
    if not holds:
        failed.append(shown)
        print("FAILED", *shown, flush=True)


def fresh():
    shutil.rmtree(site, ignore_errors=True)
    os.mkdir(site)


def write(name, content, times=1):
    path = site + b"/" + name
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(content * times)
    return path


def content(path):
    with open(path, "rb") as file:
        return file.read()


def check_clean(end, *shown):
    """All went well."""
    expect(end.status in (0, 1) and not end.err, *shown, end.what)


def many_of_each():
    """Pages with so many of everything: hits, links, anchors, entities, colours, characters."""
    many = 1_000_000 // SCALE
    for what, piece, count in [("links", b"<a href='gone.htm'>", many), ("anchors", b"<a href='#x'></a><a name=a>", many),
                               ("hits", b"hit ", many // 10), ("entities", b"\xe9&x&#233;", many // 10),
                               ("colours", b"<font color='#123456'>", many // 10), ("addresses", b"<a href='http://x/'>", many)]:
        for function in FUNCTIONS:
            if function.endswith("mended") and what == "links":
                continue
            fresh()
            path = write(b"p.htm", piece, count)
            end = End(function)
            check_clean(end, what)
            expect(os.path.getsize(path) > 0 and (function in WRITES or content(path) == piece * count), what, end.what)
            if what == "hits" and function == "replace":
                expect(content(path) == b"new " * count and end.out.count(b"*** Changed:") == count, what, end.what)


def long_line():
    """A line of 50 MB, with what is looked for at its end."""
    size = 50_000_000 // SCALE
    end_of_line = b" hit \xe9 <a href='gone.htm'>x</a><font color='#123456'><a href='http://a/'>"
    for filler in (b"x", b"<", b"&", b"=", b"a href=", b"\xe9"[:1] if LONG else b"("):
        fresh()
        path = write(b"p.htm", filler, size // len(filler))
        with open(path, "ab") as file:
            file.write(end_of_line)
        before = os.path.getsize(path)
        for function in ["links", "links today", "search", "colours", "external", "replace"]:
            end = End(function)
            check_clean(end, "a long line of", filler)
        expect(os.path.getsize(path) == before and content(path).endswith(end_of_line.replace(b"hit", b"new")), filler)


def many_files():
    """A folder of so many pages."""
    many = 100_000 if LONG else 1_000
    fresh()
    for number in range(many):
        write(b"%d.htm" % number, b"hit <a href='%d.htm'>\xe9" % ((number + 1) % many))
    for function in ["links", "links today", "search", "entities", "replace"]:
        end = End(function, seconds=300)
        check_clean(end, "many files")
        if function == "replace":
            expect(end.out.count(b"*** Changed:") == many, end.what)
    expect(all(content(site + b"/%d.htm" % number).startswith(b"new") for number in range(many)), "not all replaced")
    expect(not [name for name in os.listdir(site) if name.startswith(b".")], "temporary files")


def deep_folders():
    """500 folders deep: paths longer than the system takes, with few files to be open at a time."""
    fresh()
    here = os.open(site, os.O_RDONLY)
    for depth in range(500):
        page = os.open(b"p.htm", os.O_CREAT | os.O_WRONLY, dir_fd=here)
        os.write(page, b"hit \xe9 <a href='../p.htm'>up</a><a href='gone.htm'>")
        os.close(page)
        os.mkdir(b"a folder with a long name", dir_fd=here)
        below = os.open(b"a folder with a long name", os.O_RDONLY, dir_fd=here)
        os.close(here)
        here = below
    os.close(here)
    for function in FUNCTIONS if LONG else ["links", "links mended", "entities mended", "replace"]:
        end = End(function, [(resource.RLIMIT_NOFILE, 64)])
        check_clean(end, "deep folders")
        if function == "replace":
            expect(end.out.count(b"*** Changed:") == 500, end.what)
        if function.startswith("links"):
            expect(end.out.count(b"gone.htm'") >= 500, end.what)
    end = End("undo", [(resource.RLIMIT_NOFILE, 64)])
    check_clean(end, "deep folders")
    depth = 0
    for _, _, files, folder in os.fwalk(site):
        if files == [b"p.htm"]:
            page = os.open(b"p.htm", os.O_RDONLY, dir_fd=folder)
            depth += os.read(page, 3) == b"hit"
            os.close(page)
    expect(depth == 500, "pages left", depth, end.what)


NAMES = [b"n" * 251 + b".htm", b"\xff\xfe\xe9.htm", "é\u202e.htm".encode(), b"line\nend\r.htm", b"\x1b[2J\x1b]0;title\x07.htm",
         b"\x9b31m.htm", b" .htm", b"'\"<b>&amp;`$(x).htm", b"%2e%00.htm", b"-.htm", b"::error::x.htm"]


def wild_names():
    """Names that are no text, or are commands to a terminal: report and messages stay whole lines without any."""
    fresh()
    for name in NAMES:
        write(name, b"hit \xe9 <a href='gone.htm'>x</a><font color='#123456'>")
        os.symlink("/proc/self/mem", site + b"/bad " + name[:240] + b".htm")
    for function in FUNCTIONS:
        end = End(function, [(resource.RLIMIT_NOFILE, 64)])
        expect(end.status == 2, "wild names", end.what)
        lines = end.err.split(b"\n")[:-1]
        expect(len(lines) == len(NAMES) and all(line.startswith(b"tsl: ") for line in lines), "wild names", end.what)
        expect(all(line.endswith(b": Input/output error") for line in lines), "wild names", end.what)
        expect(not re.search(rb"[\x00-\x09\x0b-\x1f\x7f\x9b]", end.err.decode("utf-8").encode("latin-1", "replace")), end.err)
        if function == "replace":
            expect(all(content(site + b"/" + name).startswith(b"new ") for name in NAMES), end.what)
            end = End("undo")
            check_clean(end, "wild names")
            expect(all(content(site + b"/" + name).startswith(b"hit ") for name in NAMES), end.what)
    expect(len(os.listdir(site)) == 2 * len(NAMES), os.listdir(site))


def few_files_open():
    """64 open files, of which a run needs a handful however many pages there are."""
    fresh()
    for number in range(300):
        write(b"%d/%d/p.htm" % (number % 20, number), b"hit <a href='../../%d/%d/p.htm#x'><a name=x>\xe9" % ((number + 1) % 20, number + 1))
    for function in FUNCTIONS:
        check_clean(End(function, [(resource.RLIMIT_NOFILE, 64)]), "few files open")
    check_clean(End("undo", [(resource.RLIMIT_NOFILE, 64)]), "few files open")


def little_memory():
    """Address space that a run needs more of: the pages stay whole, and the message says what was missing."""
    if SANITIZED:
        return
    for megabytes in (24, 40, 64, 100, 160) if LONG else (24, 40):
        for function in FUNCTIONS:
            fresh()
            small = write(b"a.htm", b"hit \xe9")
            page = b"hit \xe9<a href='gone%s.htm'><font color='#123456'>" % (b"x" * 200)
            big = write(b"b.htm", page, 200_000 if LONG else 100_000)
            end = End(function, [(resource.RLIMIT_AS, megabytes << 20)])
            if end.status == 2:
                told = [words for words in ASKS_MEMORY if words.encode() in end.err]
                expect(told and (b"b.htm" in end.err or b"a.htm" in end.err or megabytes < 30), "memory", megabytes, end.what)
            else:
                check_clean(end, "memory", megabytes)
            changes = {"replace": (b"hit", b"new"), "entities mended": (b"\xe9", b"&eacute;")}
            for path, piece, count in ((small, b"hit \xe9", 1), (big, page, 200_000 if LONG else 100_000)):
                now = content(path)
                is_new = function in changes and now == piece.replace(*changes[function]) * count
                expect(now == piece * count or is_new, "memory", megabytes, path, end.what)
            expect(sorted(os.listdir(site)) == [b"a.htm", b"b.htm"], os.listdir(site), end.what)


def report_beyond_memory():
    """A report that memory does not hold, of pages that it holds: the run says so, and what it changed can be undone."""
    if SANITIZED:
        return
    fresh()
    old = (b"hit " + b"x" * 60 + b"\n") * 8_000
    pages = [write(b"%d.htm" % number, old) for number in range(60)]
    for function in ("search", "replace"):
        end = End(function, [(resource.RLIMIT_AS, 60 << 20)])
        expect(end.status == 2 and end.err.endswith(b"tsl: Output text too long.\nAbandoning search...\n"), end.what)
        new = [content(path) == old.replace(b"hit", b"new") for path in pages]
        expect(all(is_new or content(path) == old for is_new, path in zip(new, pages)), end.what)
        expect(sum(new) in range(5, 60) if function == "replace" else not any(new), sum(new), end.what)
    end = End("undo")
    check_clean(end)
    expect(all(content(path) == old for path in pages), end.what)


def huge_pages():
    """Pages up to and beyond 2^31 - 1 bytes, with others beside them."""
    if not LONG or SANITIZED:
        return
    for size in (2**31 - 1, 2**31, 5 * 2**31) if VERY_LONG else (2**31 - 1, 2**31):
        fresh()
        page = write(b"a.htm", b"<a name=x> hit \xe9")
        path = write(b"big.htm", b"hit")
        os.truncate(path, size)
        write(b"z.htm", b"<a href='big.htm#x'> hit \xe9 <a href='big.htm'>")
        for function in ["links", "links today", "entities", "external", "search", "colours", "replace"]:
            end = End(function, seconds=300)
            shown = ("huge page", size, end.what)
            if end.status == 2:
                expect(b"big.htm: " in end.err and end.err.count(b"\n") <= 2, *shown)
            else:
                check_clean(end, *shown)
            expect(os.path.getsize(path) == size, *shown)
            if function == "replace":
                expect(content(page).startswith(b"<a name=x> new"), *shown)
                expect(content(site + b"/z.htm").count(b"new") == 1, *shown)
            print(*shown, flush=True)


try:
    for part in (many_of_each, long_line, many_files, deep_folders, wild_names, few_files_open, little_memory, report_beyond_memory,
                 huge_pages):
        begin = time.monotonic()
        part()
        print(f"{part.__name__}: {time.monotonic() - begin:.1f} s, slowest run so far {slowest[0]:.1f} s ({slowest[1]})", flush=True)
finally:
    shutil.rmtree(scratch, ignore_errors=True)
sys.exit(1 if failed else 0)
