"""Reads the reports for machines of whole runs with readers of others, and holds each against the one in JSON."""
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import urllib.parse
import xml.etree.ElementTree

tsl, site = sys.argv[1:]
scratch = pathlib.Path(tempfile.mkdtemp())
shutil.copytree(site, scratch / "site")
# Names and pages of any bytes: no XML, JSON or address can hold them as they are.
wild = os.fsencode(scratch / "site") + b"/w%20 \xe9\x01,:&<\xc3\xa9.htm"
link = bytes(set(range(256)) - set(b"\"?#'\r\n"))
with open(wild, "wb") as page:
    page.write(b"\r\n\r\xff a href='" + link + b"' src=\"file:\xef\xbf\xbf\r\nx\n%\" <body text='#12345a'> the\r\nend the end")
(scratch / "site/utf8.htm").write_bytes("\ufeff\U0001f600é href='gone\U0001f600\uffff.htm' the end &euro".encode())
os.symlink("/proc/self/mem", scratch / "site/bad.htm")  # cannot be read
RUNS = [["links"], ["entities"], ["external"], ["colours"], ["search", "the end"], ["replace", "the end", "th'e]]>\x01"]]


def run(command, form, *more, status=None):
    end = subprocess.run([tsl, *command, "--format", form, *more, "site"], cwd=scratch, capture_output=True)
    assert status is None or end.returncode == status, (command, form, end)
    return end.stdout


def end_of(line, column, text):
    lines = re.split("\r\n|\r|\n", text)
    return (line + len(lines) - 1, len(lines[-1]) + (column if len(lines) == 1 else 1))


def keys(thing, required, others=""):
    assert set(required.split()) <= set(thing) <= set((required + " " + others).split()), thing
    return thing


def path_of(artifact, bases):
    keys(artifact, "uri", "uriBaseId")
    assert re.fullmatch(r"([A-Za-z0-9._~/:-]|%[0-9A-F]{2})*", artifact["uri"]), artifact
    base = bases[artifact["uriBaseId"]]["uri"] if "uriBaseId" in artifact else ""
    return urllib.parse.unquote_to_bytes((base + artifact["uri"]).removeprefix("file://"))


def check_sarif(text, findings):
    log = keys(json.loads(text), "$schema version runs")
    (sarif,) = log["runs"]
    keys(sarif, "tool originalUriBaseIds columnKind results invocations")
    assert log["version"] == "2.1.0" and sarif["columnKind"] == "unicodeCodePoints"
    rules = keys(keys(sarif["tool"], "driver")["driver"], "name version rules")["rules"]
    for rule in rules:
        keys(rule, "id shortDescription defaultConfiguration")
        assert rule["defaultConfiguration"]["level"] in ("error", "warning", "note")
    assert len({rule["id"] for rule in rules}) == len(rules) > 0
    (invocation,) = sarif["invocations"]
    keys(invocation, "executionSuccessful exitCode toolExecutionNotifications")
    assert invocation["executionSuccessful"] is False and invocation["exitCode"] == 2
    (failure,) = invocation["toolExecutionNotifications"]
    keys(failure, "level message locations")
    assert "Input/output error" in failure["message"]["text"]
    assert len(sarif["results"]) == len(findings)
    for result, finding in zip(sarif["results"], findings):
        keys(result, "ruleId ruleIndex level message locations", "fixes")
        rule = rules[result["ruleIndex"]]
        assert rule["id"] == result["ruleId"] == finding["kind"]
        assert rule["defaultConfiguration"]["level"] == result["level"]
        assert finding["message"] in keys(result["message"], "text")["text"]
        place = keys(keys(result["locations"][0], "physicalLocation")["physicalLocation"], "artifactLocation", "region")
        file = path_of(place["artifactLocation"], sarif["originalUriBaseIds"])
        assert os.path.exists(file) and (file == wild) == ("w%20" in finding["file"]), file
        assert ("region" in place) == (finding["line"] is not None)
        if "region" in place:
            region = place["region"]
            assert keys(region.pop("snippet"), "text")["text"] == finding["found"]
            keys(region, "startLine startColumn endLine endColumn")
            assert (region["startLine"], region["startColumn"]) == (finding["line"], finding["column"])
            assert (region["endLine"], region["endColumn"]) == end_of(finding["line"], finding["column"], finding["found"])
        assert ("fixes" in result) == (finding["proposal"] is not None)
        for fix in result.get("fixes", []):
            (change,) = keys(fix, "artifactChanges")["artifactChanges"]
            assert keys(change, "artifactLocation replacements")["artifactLocation"] == place["artifactLocation"]
            (replacement,) = change["replacements"]
            assert keys(replacement, "deletedRegion insertedContent")["deletedRegion"] == place["region"]
            assert replacement["insertedContent"] == {"text": finding["proposal"]}


def check_junit(text, findings, files):
    suites = xml.etree.ElementTree.fromstring(text)
    (suite,) = suites
    bad = {finding["file"] for finding in findings}
    cases = suite.findall("testcase")
    failed = suite.findall("testcase/failure")
    for counts in (suites, suite):
        told = [int(counts.get(name)) for name in ("tests", "failures", "errors")]
        assert told == [len(cases), len(findings), 1] and len(failed) == len(findings), told
    assert len(cases) == len(findings) + 1 + files - len(bad) - 1
    for failure, finding in zip(failed, findings):
        assert failure.get("type") == finding["kind"]
        shown = (finding["message"] + "|" + finding["found"]).split("|")
        for piece in shown:
            piece = re.sub("[^\t\n\r\x20-\ufffd\U00010000-\U0010ffff]", "\ufffd", piece)
            assert piece in failure.get("message"), (piece, failure.get("message"))


def check_github(text, findings):
    lines = [line for line in text.decode().split("\n")[:-1] if not line.endswith("::Input/output error")]
    assert len(lines) == len(findings) == text.count(b"\n") - 1
    unescape = urllib.parse.unquote
    for line, finding in zip(lines, findings):
        command, properties, message = re.fullmatch("::(error|warning|notice) ([^\r\n]*?)::([^\r\n]*)", line).groups()
        told = dict(one.split("=", 1) for one in properties.split(","))
        assert scratch / unescape(told["file"]) == pathlib.Path(finding["file"])
        assert (told.get("line"), told.get("col")) == tuple(str(finding[n]) if finding["line"] else None for n in ("line", "column"))
        assert finding["message"] in unescape(message) and finding["found"] in unescape(message)


total = {}
for command in RUNS:
    findings = [json.loads(line) for line in run(command, "json", status=2).decode().split("\n")[:-1]]
    for finding in findings:
        assert list(finding) == "file line column kind message found proposal".split(), finding
    total[command[0]] = [(pathlib.Path(f["file"]).name, f["line"], f["column"], f["found"]) for f in findings]
    files = len(list((scratch / "site").rglob("*.htm*")))
    check_sarif(run(command, "sarif"), findings)
    check_junit(run(command, "junit"), findings, files)
    check_github(run(command, "github"), findings)
    saved = scratch / "saved"
    assert run(command, "json", "--report", str(saved)) == b""
    assert [json.loads(line) for line in saved.read_text("utf-8").split("\n")[:-1]] == findings

eight_bit = "".join(chr(c) if c in (0x81, 0x8D, 0x8F, 0x90, 0x9D) else bytes([c]).decode("cp1252") for c in link)
name = "w%20 é\x01,:&<é.htm"
assert (name, 3, 11, eight_bit) in total["links"], total["links"]
assert (name, 3, 11 + len(link) + 7, "file:ï¿¿\r\nx\n%") in total["links"]
assert ("utf8.htm", 1, 10, "gone\U0001f600\uffff.htm") in total["links"]
assert total["search"][-3:] == [("utf8.htm", 1, 22, "the end"), (name, 5, 26, "the\r\nend"), (name, 6, 5, "the end")], total["search"]
assert {len(found) for _, _, _, found in total["colours"]} <= set(range(1, 8)) and total["external"]
shutil.rmtree(scratch)
