"""What the checks share: the project's files, C++ without comments and texts, and how findings are reported."""

import os
import re
import signal
import subprocess
import sys

# `scripts/check | head` ends quietly.
signal.signal(signal.SIGPIPE, signal.SIG_DFL)

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))


def tracked_files(*patterns):
    """Paths from the root of all files that git knows or would add, sorted."""
    listed = subprocess.run(
        ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard", "--", *patterns],
        cwd=ROOT, stdout=subprocess.PIPE, check=True).stdout.decode()
    return sorted({name for name in listed.split("\0") if name and os.path.isfile(os.path.join(ROOT, name))})


def read(path):
    """The text of a file under the root; None if it is not text."""
    with open(os.path.join(ROOT, path), "rb") as file:
        content = file.read()
    if b"\0" in content:
        return None
    return content.decode("utf-8", errors="replace")


_NOT_CODE = re.compile(
    r'R"(?P<mark>[^()\\\s]{0,16})\(.*?\)(?P=mark)"'  # a raw text
    r'|"(?:\\.|[^"\\\n])*"'  # a text
    r"|(?<![0-9A-Fa-f])'(?:\\.|[^'\\\n])+'"  # a character, and not the separator in 86'400
    r"|//[^\n]*|/\*.*?\*/",
    re.DOTALL)


def code_only(text):
    """C++ with its comments and the contents of its texts blanked; every line keeps its number."""
    return _NOT_CODE.sub(lambda match: re.sub(r"[^\n]", " ", match.group()), text)


def line_of(text, position):
    return text.count("\n", 0, position) + 1


def report(name, findings, looked_at):
    """Prints one line if all is well, else each finding, and ends the program."""
    if findings:
        print(f"{name}: {len(findings)} to mend ({looked_at})")
        for finding in findings:
            print(f"  {finding}")
        sys.exit(1)
    print(f"{name}: fine ({looked_at})")
    sys.exit(0)
