"""report.py COMMIT [FILE]: a table of the trials on standard input, a line of JSON each, and what is wrong with them;
their rows into the table of FILE as well. Fails where a record is not what was played."""

import datetime
import json
import sys

COLUMNS = ("Desktop", "Day", "Commit", "Window and idle time from", "Minutes", "Records", "Off by", "Switch",
           "At rest, an hour", "In use, an hour", "Wake-ups a minute", "Memory", "Not run")


def cells(row, commit):
    verdict = row["verdict"]
    answered = [channel or "nobody" for channel in row["channels"]]
    has_played = bool(verdict["stretches"])
    return (f"{row['desktop']} {row['version']}", datetime.date.today().isoformat(), commit, ", ".join(answered),
            f"{row['minutes']:.0f}",
            ("not equal" if verdict["problems"] else f"{verdict['stretches']} equal" if has_played else "none, as played"),
            f"{verdict['worst']:.1f} s" if has_played else "-",
            f"{max(verdict['switches']) * 1000:.0f} ms" if verdict["switches"] else "-",
            f"{row['rest']:.2f} s" if "rest" in row else "-", f"{row['used']:.2f} s" if "used" in row else "-",
            f"{row['waits']:.1f}" if "waits" in row else "-", "{:.0f} to {:.0f} MiB".format(*row["memory"]) if "memory" in row else "-",
            ", ".join(row["left_out"]) or "-")


def line(values):
    return "| " + " | ".join(values) + " |"


def is_of(text, row):
    """The same desktop, version and length?"""
    values = [value.strip() for value in text.strip("|").split("|")]
    return (values[0], values[4]) == (row[0], row[4])


def note(file, rows):
    """Puts each row in the place of the one that is like it, or below the last one."""
    with open(file, encoding="utf-8") as old:
        lines = old.read().split("\n")
    table = lines.index(line(COLUMNS))
    for row in rows:
        end = next(at for at in range(table, len(lines)) if not lines[at].startswith("|"))
        place = next((at for at in range(table + 2, end) if is_of(lines[at], row)), None)
        if place is None:
            lines.insert(end, line(row))
        else:
            lines[place] = line(row)
    with open(file, "w", encoding="utf-8") as new:
        new.write("\n".join(lines))


def main():
    commit, files = sys.argv[1], sys.argv[2:]
    trials = [json.loads(text) for text in sys.stdin]
    rows = [cells(trial, commit) for trial in trials if "verdict" in trial]
    widths = [max(map(len, column)) for column in zip(COLUMNS, *rows)]
    for row in (COLUMNS, *rows):
        print("  ".join(cell.ljust(width) for cell, width in zip(row, widths)).rstrip())
    for trial in trials:
        if "missing" in trial:
            print(f"{trial['desktop']}: not run: {trial['missing']}")
        for problem in trial.get("verdict", {}).get("problems", []):
            print(f"{trial['desktop']}: {problem}")
    for file in files:
        note(file, rows)
    return any(trial.get("verdict", {}).get("problems") for trial in trials) or not rows


sys.exit(main())
