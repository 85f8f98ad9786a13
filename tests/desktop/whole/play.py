"""play.py DESKTOP ROUNDS CLI: records a session of that desktop with the real tracker while somebody's work is played in
it, and prints what came out as a line of JSON."""

import dataclasses
import datetime
import glob
import json
import os
import re
import signal
import subprocess
import sys
import time

import records
import sessions
from records import Stretch

THRESHOLD = 30  # seconds without input after which somebody is away
LETTER, SUMS = "org.example.Letter", "org.example.Sums"


class Meter:
    """Processor time and waits of a process until now."""

    def __init__(self, process):
        self.at = time.monotonic()
        self.processor = 0.0
        self.waits = 0
        for task in glob.glob(f"/proc/{process}/task/*"):
            with open(task + "/schedstat", encoding="ascii") as file:
                self.processor += int(file.read().split()[0]) / 1e9
            with open(task + "/status", encoding="ascii") as file:
                self.waits += int(re.search(r"^voluntary_ctxt_switches:\s*(\d+)", file.read(), re.M).group(1))


class Player:
    """Does what a user does, and remembers what was in front when."""

    def __init__(self, session):
        self.session = session
        self.windows = {}
        self.played = []
        self.rests = []  # seconds, processor time and waits
        self.tracker = None
        self.next = time.monotonic()

    def play(self, rounds):
        self.open(LETTER, "one")
        self.open(SUMS, "two")
        for _ in range(2):  # a shell may give the focus to a new window after that
            time.sleep(1.5)
            self.session.front(LETTER)
        self.played.clear()
        store = self.session.path("store.sqlite")
        self.session.run(self.session.cli, "--store", store, "load", "-",
                         input=f'{{"entity":"AppPreference","idle_threshold_seconds":{THRESHOLD}}}\n')
        with open(self.session.path("track"), "w", encoding="utf-8") as said:
            self.tracker = self.session.spawn(self.session.cli, "--store", store, "track", stdout=said)
        self.mark(LETTER, "one")
        self.next = time.monotonic()
        time.sleep(1)
        begin = Meter(self.tracker.pid)
        for number in range(rounds):
            self.play_round(number)
            if self.tracker.poll() is not None:
                break
        measured = self.measure(begin) | {"channels": channels(self.session)}
        self.mark(None)
        self.tracker.send_signal(signal.SIGTERM)
        self.tracker.wait(10)
        return measured

    def play_round(self, number):
        if number:
            self.open(LETTER, "one")
        self.work(25)
        if number:
            self.open(SUMS, "two")
        for application, title in ((SUMS, "two"), (LETTER, "one")):
            self.front(application, title)
            self.work(25)
        self.windows[LETTER].stdin.write("three\n")
        self.windows[LETTER].stdin.flush()
        self.mark(LETTER, "three", is_title=True)
        self.work(70)
        self.mark(None)
        self.rest(100)
        self.session.touch()
        self.mark(LETTER, "three")
        self.work(25)
        if self.session.locks:
            self.mark(None)
            self.session.lock()
            self.sleep(25)
            self.session.unlock()
            self.session.touch()
            self.mark(LETTER, "three")
            self.work(25)
        for application in (SUMS, LETTER):
            self.windows.pop(application).stdin.close()
            time.sleep(0.5)
        self.mark(None)
        self.sleep(25)

    def open(self, application, title):
        self.windows[application] = self.session.spawn(sys.executable, os.path.join(sessions.HERE, "window.py"),
                                                       application, title, stdin=subprocess.PIPE,
                                                       stdout=subprocess.PIPE, text=True)
        self.windows[application].stdout.readline()
        self.mark(application, title)
        time.sleep(0.5)

    def front(self, application, title):
        self.mark(application, title, is_timed=True)
        self.session.front(application)

    def mark(self, application, title="", **how):
        now = time.time()
        if self.played:
            if (self.played[-1].application, self.played[-1].title) == (application, title):
                return
            self.played[-1].end = now
        self.played.append(Stretch(now, now, application, title, **how))

    def work(self, seconds):
        """Somebody types now and then."""
        for _ in range(seconds // 5):
            self.session.touch()
            self.sleep(5)
        self.session.touch()

    def rest(self, seconds):
        settling = THRESHOLD + 10
        self.sleep(settling)
        begin = Meter(self.tracker.pid)
        self.sleep(seconds - settling)
        end = Meter(self.tracker.pid)
        self.rests.append((end.at - begin.at, end.processor - begin.processor, end.waits - begin.waits))

    def sleep(self, seconds):
        """From the moment at which the last one was to end: the half hour stays one."""
        self.next = max(self.next + seconds, time.monotonic())
        time.sleep(max(0.0, self.next - time.monotonic()))

    def measure(self, begin):
        if self.tracker.poll() is not None or not self.rests:
            return {}
        end = Meter(self.tracker.pid)
        with open(f"/proc/{self.tracker.pid}/smaps_rollup", encoding="ascii") as file:
            memory = dict(re.findall(r"^(Pss|Rss):\s*(\d+)", file.read(), re.M))
        seconds, processor, waits = map(sum, zip(*self.rests))
        return {"used": (end.processor - begin.processor) * 3600 / (end.at - begin.at),
                "rest": processor * 3600 / seconds, "waits": waits * 60 / seconds,
                "memory": [int(memory["Pss"]) / 1024, int(memory["Rss"]) / 1024]}


def seconds(instant):
    return datetime.datetime.fromisoformat(instant).timestamp()


def recorded(session):
    lines = session.run(session.cli, "--store", session.path("store.sqlite"), "dump").stdout.splitlines()
    rows = [row for row in map(json.loads, lines) if row["entity"] == "ActivityRecord"]
    return [Stretch(seconds(row["start_time"]), seconds(row["end_time"]), row["app_name"], row["window_title"] or "")
            for row in rows if row["end_time"]]


def channels(session):
    """Who answers for the window in front and for idle time."""
    answer = json.loads(session.run(session.cli, "--store", session.path("store.sqlite"), "doctor", "--json").stdout)
    by_question = {channel["question"]: channel["channel"] for channel in answer["channels"] if channel["available"]}
    return [by_question.get(question) for question in ("front window and activation", "system idle time")]


def trial(name, rounds, cli):
    row = {"desktop": name}
    try:
        session = sessions.DESKTOPS[name](cli)
    except sessions.NotThere as reason:
        return row | {"missing": str(reason)}
    try:
        row["version"] = session.version_text()
        if session.aid:
            session.run(cli, "desktop", "install")
        player = Player(session)
        begin = time.monotonic()
        row |= player.play(rounds)
        row["minutes"] = (time.monotonic() - begin) / 60
        row["left_out"] = [] if session.locks else ["lock"]
        if not session.sees:
            row["left_out"] += ["switches", "input"]
        verdict = records.compare(player.played if session.sees else [], recorded(session))
        return row | {"verdict": dataclasses.asdict(verdict)}
    except BaseException:
        session.show_log()
        raise
    finally:
        session.close()


def main():
    # Who is ended ends what was started.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    name, rounds, cli = sys.argv[1:]
    print(json.dumps(trial(name, int(rounds), cli)))


main()
