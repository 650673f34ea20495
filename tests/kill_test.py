"""Kills tsl at random moments while it changes pages, or takes changes back: each page stays old or new whole, the next run
ends the job, and all that was changed can be undone. Usage: kill_test.py TSL [KILLS [SEED]]"""
import os
import pathlib
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

TSL = sys.argv[1]
LONG = bool(os.environ.get("TESSARIL_LONG"))
KILLS = int(sys.argv[2]) if len(sys.argv) > 2 else 1000 if LONG else 16
SEED = int(sys.argv[3]) if len(sys.argv) > 3 else random.randrange(2**32)
PAGES = 200
TEMPORARY = re.compile(rb"\.tessaril-[0-9a-f]+-[0-9a-f]+")
COPY = re.compile(rb"\.tessaril-old-[0-9a-f]+-[0-9a-f]+")


def page(number, text):
    """A page of up to 30 KB, so that some are written in the middle of a kill."""
    return (f"<p>{number} {text} " + "x" * (number * 151) + f" {text}</p>\n").encode()


class Replacing:
    """`tsl replace --yes` on a tree of pages, two of which have a second name."""

    lists = True  # the folders that it changes
    first_run = 1

    @staticmethod
    def command(folder):
        return ["replace", "hit", "new", "--yes", folder]

    def make(self, folder):
        for number in range(PAGES):
            path = folder / f"{number % 4}" / f"{number}.htm"
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(page(number, "hit"))
        os.link(folder / "3/199.htm", folder.parent / "twin.htm")
        os.link(folder / "0/0.htm", folder.parent / "small twin.htm")

    def pages(self, folder):
        for number in range(PAGES):
            yield folder / f"{number % 4}" / f"{number}.htm", page(number, "hit"), page(number, "new")


class Undoing(Replacing):
    """`tsl undo --yes` of that, on the same tree."""

    lists = False
    first_run = 2

    @staticmethod
    def command(folder):
        return ["undo", "1", "--yes"]

    def make(self, folder):
        super().make(folder)
        status, _, errors = run(Replacing.command(folder), folder)
        assert status == 0 and not errors, (status, errors)

    def pages(self, folder):
        for path, old, new in super().pages(folder):
            yield path, new, old


def files_named(folder, pattern):
    return [pathlib.Path(path) for path in folder.rglob("*") if pattern.fullmatch(os.fsencode(path.name))]


def user_of(folder):
    """An environment in which what can be undone is beside the folder."""
    return {**os.environ, "XDG_DATA_HOME": folder.parent / "user"}


def run(command, folder, seconds=None):
    """The exit status, and how long it took; killed after so many seconds."""
    begin = time.monotonic()
    tsl = subprocess.Popen(
        [TSL, *command], stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, stdin=subprocess.DEVNULL, env=user_of(folder))
    if seconds is not None:
        time.sleep(seconds)
        tsl.send_signal(signal.SIGKILL)
    errors = tsl.communicate()[1]
    return tsl.returncode, time.monotonic() - begin, errors


def check(job, folder, counts):
    """What a killed run left. A page under two names is written in place: a copy holds it where it is neither."""
    copies = files_named(folder, COPY)
    for path, old, new in job.pages(folder):
        content = path.read_bytes()
        counts["old" if content == old else "new" if content == new else "torn"] += 1
        if content in (old, new):
            continue
        held = [copy for copy in copies if copy.read_bytes() == old]
        assert path.stat().st_nlink > 1 and held, f"{path} is neither old nor new ({len(content)} bytes)"
        path.write_bytes(old)  # as the user does
    left = files_named(folder, TEMPORARY)
    counts["left"] += len(left)
    counts["copies"] += len(copies)
    return left, copies


def check_finished(job, folder, copies):
    for path, _, new in job.pages(folder):
        assert path.read_bytes() == new, f"{path} was not done"
    assert files_named(folder, COPY) == copies, "a copy that may hold a page was removed"
    known = {path for path, _, _ in job.pages(folder)} | set(copies)
    others = [path for path in folder.rglob("*") if path.is_file() and path not in known]
    return others


def kill_one(job, folder, seconds, counts):
    shutil.rmtree(folder.parent)
    folder.mkdir(parents=True)
    job.make(folder)
    status, _, _ = run(job.command(folder), folder, seconds)
    counts["killed" if status == -signal.SIGKILL else "too late"] += 1
    left, copies = check(job, folder, counts)
    for path in left:  # as if an hour had passed
        os.utime(path, (time.time() - 3600,) * 2)
    still = {path: path.read_bytes() for path in copies}
    remains = [path for path, old, _ in job.pages(folder) if path.read_bytes() == old]
    status, _, errors = run(job.command(folder), folder)
    assert status == (0 if remains else 1) and not errors, (status, errors)
    others = check_finished(job, folder, copies)
    # Leftovers go from each folder that the second run listed and in which it had something to change.
    changed = {path.parent for path in remains} if job.lists else set()
    assert not [path for path in others if path.parent in changed], others
    assert all(path.read_bytes() == content for path, content in still.items())
    check_undone(job, folder)


def check_undone(job, folder):
    """Taking back both runs, the last one first, leaves all as it was before the first."""
    kept = subprocess.run([TSL, "undo", "--list"], capture_output=True, env=user_of(folder)).stdout
    for number in re.findall(rb"^([0-9]+)  ", kept, re.MULTILINE):
        if int(number) < job.first_run:
            continue
        status, _, errors = run(["undo", number, "--yes"], folder)
        assert status in (0, 1) and not errors, (number, status, errors)
    for path, old, _ in job.pages(folder):
        assert path.read_bytes() == old, f"{path} was not restored"


def kill_many(job, kills):
    """The moments are spread over the time that a whole run takes."""
    scratch = pathlib.Path(tempfile.mkdtemp())
    folder = scratch / "tree" / "site"
    folder.mkdir(parents=True)
    job.make(folder)
    status, whole, errors = run(job.command(folder), folder)
    assert status == 0 and not errors, (status, errors)
    moments = random.Random(SEED)
    counts = dict.fromkeys(["killed", "too late", "old", "new", "torn", "left", "copies"], 0)
    tries = 0
    while counts["killed"] < kills:
        tries += 1
        assert tries <= 4 * kills, counts  # it ends before it can be killed
        seconds = moments.random() * whole
        try:
            kill_one(job, folder, seconds, counts)
        except AssertionError:
            print(f"try {tries} after {seconds:.4f} s of {whole:.4f} s, seed {SEED}; the tree is {folder}")
            raise
    shutil.rmtree(scratch)
    print(f"{job.__class__.__name__}: {tries} runs of {whole * 1000:.0f} ms, seed {SEED}: {counts}")
    assert counts["old"] and counts["new"], counts


kill_many(Replacing(), KILLS // 2)
kill_many(Undoing(), KILLS // 2)
