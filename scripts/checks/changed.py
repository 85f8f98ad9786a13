"""What the checks share that look at compiled sources, the changed ones first, for a time that is given.

Changed is what differs from the base, together with what is not committed yet. The base is --base, else where this branch
left origin/main, else (on main itself, or in a clone that holds nothing else) the last commit older than a day.
"""

import argparse
import concurrent.futures
import json
import os
import re
import subprocess
import time

import sources

# Its sources are compiled one by one, and its commands say how.
BUILD = os.path.join(sources.ROOT, "build", "debug")
EMPTY_TREE = "4b825dc642cb6eb9a060e54bf8d69288fbee4904"  # git's name for a tree without files


def git(*arguments):
    """What git answers, without the line end; None if it refuses."""
    answer = subprocess.run(["git", *arguments], cwd=sources.ROOT, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    return answer.stdout.decode().strip() if answer.returncode == 0 else None


def default_base():
    head = git("rev-parse", "--verify", "--quiet", "HEAD")
    left = git("merge-base", "HEAD", "origin/main")
    if left and left != head:
        return left
    return (head and git("rev-list", "-1", "--before=24 hours ago", "HEAD")) or EMPTY_TREE


def changed_files(base, patterns):
    """Sources that differ from `base`, the most recently changed first."""
    names = git("diff", "--name-only", "--diff-filter=d", base, "--", *patterns)
    if names is None:
        raise SystemExit(f"there is no commit {base} to compare with")
    untracked = git("ls-files", "--others", "--exclude-standard", "--", *patterns) or ""
    found = {name for name in (names + "\n" + untracked).split("\n") if name}
    return sorted(found, key=lambda name: -os.path.getmtime(os.path.join(sources.ROOT, name)))


def commands():
    """The compiler's command by the source that it stands for. A header has one that compiles nothing but it."""
    with open(os.path.join(BUILD, "compile_commands.json"), encoding="utf-8") as file:
        listed = json.load(file)
    found = {}
    for command in listed:
        file = os.path.normpath(os.path.join(command["directory"], command["file"]))
        header = re.search(r"_verify_interface_header_sets/(.*\.h)\.cxx$", file)
        name = "src/" + header.group(1) if header else os.path.relpath(file, sources.ROOT)
        found[name] = {**command, "file": file}
    return found


def check(name, about, patterns, inspect):
    """Ends the program with what `inspect(command)` finds in the sources that the command line asks for."""
    parser = argparse.ArgumentParser(prog=f"scripts/checks/{name}", description=about)
    parser.add_argument("--all", action="store_true", help="look at every source")
    parser.add_argument("--base", help="the commit to compare with")
    parser.add_argument("--seconds", type=float, help="begin no further file after this time")
    parser.add_argument("files", nargs="*", help="look at these sources only")
    options = parser.parse_args()

    units = commands()
    if options.files:
        wanted = [os.path.relpath(os.path.abspath(file), sources.ROOT) for file in options.files]
    elif options.all:
        wanted = sources.tracked_files(*patterns)
    else:
        wanted = changed_files(options.base or default_base(), patterns)
    # A header outside src has no unit of its own; it is looked at with whatever includes it.
    # Tests use the library in ways on purpose that tools warn of; the compiler's warnings hold for them.
    wanted = [file for file in wanted if file in units and not file.startswith("tests/")]

    deadline = time.monotonic() + options.seconds if options.seconds else None
    left_out = []

    def look(file):
        if deadline and time.monotonic() > deadline:
            left_out.append(file)
            return []
        return inspect(units[file])

    with concurrent.futures.ThreadPoolExecutor(max_workers=os.cpu_count()) as pool:
        findings = sorted({line for lines in pool.map(look, wanted) for line in lines})
    looked_at = f"{len(wanted) - len(left_out)} of {len(wanted)} files, time was up" if left_out else f"{len(wanted)} files"
    sources.report(name.replace("headers-alone", "headers alone"), findings, looked_at)
