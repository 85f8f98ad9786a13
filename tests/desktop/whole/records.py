"""What was in front, beside what was recorded."""

from dataclasses import dataclass

TICK = 30.0  # seconds between two looks without input events
SWITCH = 2.0  # a record lasts a second at least, and a window takes its time to appear


@dataclass
class Stretch:
    """Somebody had this in front, or nothing, or was away (no application)."""

    begin: float
    end: float
    application: str | None
    title: str = ""
    is_timed: bool = False  # it began with a switch between windows that stood there
    is_title: bool = False  # it began with another title of the same window

    def is_like(self, other):
        return (self.application, self.title) == (other.application, other.title)

    def __str__(self):
        return f"{self.application or 'nothing'} \"{self.title}\" for {self.end - self.begin:.1f} s"


def joined(stretches):
    """Without the borders between two of the same."""
    result = []
    for stretch in sorted(stretches, key=lambda each: each.begin):
        if result and result[-1].is_like(stretch) and stretch.begin - result[-1].end < 0.5:
            result[-1].end = stretch.end
        else:
            result.append(stretch)
    return result


def overlap(one, others):
    return sum(max(0.0, min(one.end, other.end) - max(one.begin, other.begin)) for other in others)


@dataclass
class Verdict:
    problems: list
    stretches: int  # how many were played
    switches: list  # seconds from a switch to the start of its record
    worst: float = 0.0  # the largest difference between a record's length and what it should have been
    invented: float = 0.0  # seconds that were recorded though nobody was there or nothing in front
    lost: float = 0.0  # seconds in which something was in front and nothing recorded


def compare(played, recorded):
    """Each record has to be one of the stretches, with the length to a tick."""
    stretches = joined([stretch for stretch in played if stretch.application])
    records = joined(recorded)
    verdict = Verdict([], len(stretches), [])
    for one, two in zip(records, records[1:]):
        if two.begin < one.end - 0.001:
            verdict.problems.append(f"{one} and {two} overlap")
    for stretch in stretches:
        verdict.lost += stretch.end - stretch.begin - overlap(stretch, records)
    for record in records:
        verdict.invented += record.end - record.begin - overlap(record, stretches)
    if [(each.application, each.title) for each in records] != [(each.application, each.title) for each in stretches]:
        verdict.problems.append("recorded: " + ", ".join(map(str, records)) + "; played: " +
                                ", ".join(map(str, stretches)))
        return verdict
    for stretch, record in zip(stretches, records):
        difference = abs((record.end - record.begin) - (stretch.end - stretch.begin))
        verdict.worst = max(verdict.worst, difference)
        late = record.begin - stretch.begin
        if stretch.is_timed:
            verdict.switches.append(late)
        if difference > TICK + SWITCH:
            verdict.problems.append(f"{stretch} was recorded as {record}")
        if not -0.5 <= late <= (TICK if stretch.is_title else 0) + SWITCH:
            verdict.problems.append(f"{stretch}: its record begins {late:.1f} s late")
    borders = sum(1 for stretch in played if not stretch.application)
    if verdict.invented > SWITCH * borders:
        verdict.problems.append(f"{verdict.invented:.1f} s were invented")
    if verdict.lost > SWITCH * (borders + 1):
        verdict.problems.append(f"{verdict.lost:.1f} s were lost")
    return verdict
