#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Writes the made-up surveys of this folder. Same bytes on every run; see README.md for what they hold.

    python3 samples/make_samples.py            writes beside this script
    python3 samples/make_samples.py FOLDER     writes into FOLDER
"""

import math
import pathlib
import random
import sys
from dataclasses import dataclass

WEST = 436000.0
SOUTH = 5512000.0
ROW_SPACING = 5.0  # metres between neighbouring rows


@dataclass
class Site:
    number: int
    x: float
    y: float
    em1: float
    em2: float
    row: int


class Noise:
    """Random numbers built on random.Random.random alone, whose sequence is the same in every Python 3."""

    def __init__(self, seed):
        self._source = random.Random(seed)

    def uniform(self, low, high):
        return low + (high - low) * self._source.random()

    def normal(self, deviation):
        return deviation * (sum(self._source.random() for _ in range(12)) - 6.0)

    def happens(self, probability):
        return self._source.random() < probability


def deep_reading(east, north):
    """A smooth field in mS/m: a rise to the north-east, a wet swale across it, a dry sandy knoll."""
    swale = 20.0 * math.exp(-(((north - 0.45 * east - 40.0) / 22.0) ** 2))
    knoll = -14.0 * math.exp(-(((east - 150.0) / 38.0) ** 2) - ((north - 40.0) / 30.0) ** 2)
    return 34.0 + 0.05 * east + 0.05 * north + swale + knoll + 3.0 * math.sin(east / 23.0) * math.cos(north / 17.0)


def shallow_reading(deep, east, north):
    return 0.76 * deep + 2.5 + 2.0 * math.sin(east / 11.0 + north / 19.0)


def logged_positions(noise, length):
    """Distances along one row at which the logger wrote a site: steps of about a metre, and now and then a
    pause in which the same position is written again."""
    along = noise.uniform(0.0, 0.6)
    while along <= length:
        repeats = 1
        if noise.happens(0.018):
            repeats += 1 + int(noise.uniform(0.0, 3.0))
        for _ in range(repeats):
            yield along
        along += 1.0 + max(-0.15, min(0.15, noise.normal(0.06)))


def drive(noise, rows, length, running_north):
    """A field driven up and down; the logger is stopped for the turn at each row's end."""
    sites = []
    for row in range(1, rows + 1):
        across = (row - 1) * ROW_SPACING
        wobble = noise.uniform(0.0, 6.28)
        last = None
        for along in logged_positions(noise, length):
            if along != last:
                step_aside = 0.12 * math.sin(along / 14.0 + wobble)
                distance = along if row % 2 else length - along
            last = along
            east, north = (across + step_aside, distance) if running_north else (distance, across + step_aside)
            deep = deep_reading(east, north)
            em1 = deep + noise.normal(0.7)
            em2 = shallow_reading(deep, east, north) + noise.normal(0.6)
            sites.append(Site(len(sites) + 1, round(WEST + east, 2), round(SOUTH + north, 2),
                              round(em1, 2), round(em2, 2), row))
    return sites


def site_in_row(sites, row, position):
    """The site at a fraction (0 to 1) of a row, counted in sites."""
    run = [site for site in sites if site.row == row]
    return run[int(position * (len(run) - 1))]


# --- the fixed-column survey -------------------------------------------------------------------------------

SPIKES = [(4, 0.30, 142.50, 118.30), (9, 0.71, 131.80, 96.40), (17, 0.52, 155.20, 127.60),
          (23, 0.12, -3.40, -6.20), (31, 0.85, 126.90, 101.70), (36, 0.44, 2.10, -1.50)]


def fixed_survey():
    sites = drive(Noise(38), rows=40, length=146.0, running_north=True)
    for row, position, em1, em2 in SPIKES:
        site = site_in_row(sites, row, position)
        site.em1, site.em2 = em1, em2
    return sites


def fixed_line(site, two_readings):
    line = f"{site.number:8d} {site.x:12.2f} {site.y:12.2f} {site.em1:8.2f}"
    return f"{line} {site.em2:8.2f}" if two_readings else line


def put(line, first, last, text):
    """The line with columns first..last (1-based) replaced by the text, right-aligned."""
    return line[:first - 1] + text.rjust(last - first + 1) + line[last:]


BAD_LINES = [  # row, fraction of the row, needs the second reading, what happens to the line
    (2, 0.20, False, lambda line: put(line, 1, 8, "2A7")),
    (5, 0.55, True, lambda line: put(line, 45, 52, "****")),
    (8, 0.35, True, lambda line: put(line, 45, 52, "-99.99")),
    (11, 0.80, False, lambda line: put(line, 10, 21, "436O50.12")),
    (13, 0.40, False, lambda line: put(line, 23, 34, "")),
    (15, 0.62, False, lambda line: put(line, 36, 43, "--.--")),
    (18, 0.25, False, lambda line: put(line, 36, 43, "-99.99")),
    (21, 0.50, False, lambda line: put(line, 1, 8, "")),
    (24, 0.45, True, lambda line: line[:44]),
    (26, 0.70, True, lambda line: put(line, 45, 52, "-10.01")),
    (29, 0.33, False, lambda line: put(line, 10, 21, "no fix")),
    (33, 0.58, False, lambda line: put(line, 23, 34, "5512 040.7")),
    (37, 0.27, False, lambda line: put(line, 36, 43, "OVER")),
    (39, 0.66, False, lambda line: put(line, 36, 43, "-10.50")),
]
SHORT_LINES = [(7, 0.5, ""), (20, 0.5, "#"), (34, 0.5, "")]  # written after the site at this place


def fixed_lines(sites, two_readings):
    damage = {site_in_row(sites, row, position).number: spoil
              for row, position, needs_second, spoil in BAD_LINES if two_readings or not needs_second}
    short = {site_in_row(sites, row, position).number: text for row, position, text in SHORT_LINES}
    for site in sites:
        line = fixed_line(site, two_readings)
        yield damage[site.number](line) if site.number in damage else line
        if site.number in short:
            yield short[site.number]


# --- the generic surveys -----------------------------------------------------------------------------------

LOW_FIRST, GARBLED_FIRST, LOW_SECOND = "low first", "garbled first", "low second"
DROPPED = [(3, 0.40, LOW_FIRST), (6, 0.75, GARBLED_FIRST), (8, 0.20, LOW_SECOND), (10, 0.50, LOW_FIRST)]


def generic_survey():
    """600 sites in 12 rows that every file holds, and the records among them that an import drops."""
    sites = drive(Noise(235), rows=12, length=49.5, running_north=False)
    dropped = {}
    for row, position, kind in DROPPED:
        dropped[site_in_row(sites, row, position).number] = kind
    good = [site for site in sites if site.number not in dropped]
    surplus = {site.number for site in good[600:]}
    sites = [site for site in sites if site.number not in surplus]
    zero = site_in_row(sites, 5, 0.3)  # a reading that equals the minimum offered on the screen is kept
    zero.em1, zero.em2 = 0.0, 0.0
    return sites, dropped


def generic_values(site, kind, has_site, has_second, has_row, garbled):
    em1 = {LOW_FIRST: "-4.20", GARBLED_FIRST: garbled}.get(kind, f"{site.em1:.2f}")
    em2 = "-1.35" if kind == LOW_SECOND else f"{site.em2:.2f}"
    values = [f"{site.x:.2f}", f"{site.y:.2f}", em1]
    return ([str(site.number)] if has_site else []) + values + ([em2] if has_second else []) \
        + ([str(site.row)] if has_row else [])


def generic_records(has_site, has_second, has_row, garbled="*****"):
    sites, dropped = generic_survey()
    for site in sites:
        kind = dropped.get(site.number)
        if kind != LOW_SECOND or has_second:
            yield generic_values(site, kind, has_site, has_second, has_row, garbled)


def with_commas(records, header=None):
    rows = ([header] if header else []) + list(records)
    return "".join(",".join(values) + "\r\n" for values in rows)


def with_blanks(records):
    return "".join(" ".join(values) + "\n" for values in records)


def in_columns(records):
    return "".join("".join(value.rjust(14) for value in values) + "\r\n" for values in records)


def with_tabs(records):
    return "".join("\t".join(values) + "\n" for values in records)


def mixed(records):
    """Commas, blanks and tabs by turns; now and then a record on two lines, or two records on one line."""
    separators = [",", "  ", ", ", "\t", " , "]
    text = ""
    for number, values in enumerate(records):
        if number % 40 == 20:
            text += " ".join(values[:3]) + "\n  " + ",".join(values[3:])
        else:
            text += separators[number % len(separators)].join(values)
        text += "   " if number % 50 == 30 else "\n"
    return text


# --- a field of a logger that never stopped -----------------------------------------------------------------

FIELD_ROWS, FIELD_SPACING, FIELD_LENGTH = 24, 6.0, 170.0
TURN = math.radians(14.0)  # the rows' direction, east of north
DRIFT = 7.0  # mS/m that the warming instrument gains from the first site to the last
FIELD_METAL = [(0.083, 148.0), (0.391, -21.5), (0.667, 171.2), (0.874, 133.6)]  # part of the drive, first reading
LOST_FIXES = [(0.152, 4), (0.447, 3), (0.715, 5)]  # part of the drive, sites at 0, 0
PAUSES = [(0.262, 25), (0.588, 40)]  # part of the drive, sites on the spot


def field_reading(across, along):
    """A loamy slope with a wet corner, in mS/m."""
    wet = 46.0 * math.exp(-(((across - 128.0) / 34.0) ** 2) - ((along - 150.0) / 42.0) ** 2)
    return 38.0 + 0.09 * along - 0.04 * across + wet + 2.5 * math.sin(across / 19.0) * math.cos(along / 31.0)


def pipe_signal(across, along):
    """A steel pipe on its way across the field: a trough between two crests."""
    beside = (along - 0.32 * across - 46.0) / 2.4
    return 38.0 * math.exp(-((beside - 1.5) ** 2)) + 38.0 * math.exp(-((beside + 1.5) ** 2)) - 30.0 * math.exp(-beside ** 2)


def field_drive():
    """Where the logger is at each metre or so: rows up and down, half circles between them."""
    radius = FIELD_SPACING / 2
    for row in range(FIELD_ROWS):
        up = row % 2 == 0
        for step in range(int(FIELD_LENGTH)):
            yield row * FIELD_SPACING, float(step) if up else FIELD_LENGTH - step
        if row + 1 == FIELD_ROWS:
            return
        for step in range(10):
            angle = math.pi * step / 10
            way = radius * math.sin(angle)
            yield (row * FIELD_SPACING + radius - radius * math.cos(angle), FIELD_LENGTH + way if up else -way)


def field_survey():
    """Sites of the drive as the logger wrote them; row 0, for it does not know of rows."""
    noise = Noise(2711)
    path = list(field_drive())
    pauses = {int(part * len(path)): sites for part, sites in PAUSES}
    metal = {int(part * len(path)): reading for part, reading in FIELD_METAL}
    lost = {int(part * len(path)) + i for part, sites in LOST_FIXES for i in range(sites)}
    aside = ahead = 0.0
    sites = []
    for place, (across, along) in enumerate(path):
        aside, ahead = 0.9 * aside + noise.normal(0.035), 0.9 * ahead + noise.normal(0.035)
        drift = DRIFT * place / len(path)
        deep = field_reading(across, along)
        for _ in range(1 + pauses.get(place, 0)):
            em1 = deep + pipe_signal(across, along) + drift + noise.normal(0.6)
            em2 = 0.8 * deep + 1.5 + 0.45 * pipe_signal(across, along) + 0.6 * drift + noise.normal(0.5)
            if place in metal:
                em1, em2 = metal[place], 0.7 * metal[place]
            east, north = across + aside, along + ahead
            x = 437800.0 + east * math.cos(TURN) + north * math.sin(TURN)
            y = 5514200.0 + north * math.cos(TURN) - east * math.sin(TURN)
            if place in lost:
                x = y = 0.0
            sites.append(Site(len(sites) + 1, round(x, 2), round(y, 2), round(em1, 2), round(em2, 2), 0))
    return sites


def in_degrees(sites):
    """The same drive as a table with a header line, its positions in degrees (on a sphere: the field is made up)."""
    yield ["Site", "Longitude", "Latitude", "EM1 (mS/m)", "EM2 (mS/m)"]
    for site in sites:
        fix = site.x != 0
        latitude = 49.75 + (site.y - 5514200.0) / 111195.0 if fix else 0.0
        longitude = -98.12 + (site.x - 437800.0) / (111195.0 * math.cos(math.radians(49.75))) if fix else 0.0
        yield [str(site.number), f"{longitude:.7f}", f"{latitude:.7f}", f"{site.em1:.2f}", f"{site.em2:.2f}"]


# --- writing -----------------------------------------------------------------------------------------------


def all_files():
    survey = fixed_survey()
    yield "serpentine_two_readings.dat", "".join(line + "\r\n" for line in fixed_lines(survey, True))
    yield "serpentine_one_reading.dat", "\n".join(fixed_lines(survey, False))
    field = field_survey()
    yield "field_without_stops.dat", "".join(fixed_line(site, True) + "\r\n" for site in field)
    yield "field_in_degrees.csv", with_commas(in_degrees(field))
    yield "generic_1_xy_ec1_row.csv", with_commas(generic_records(False, False, True))
    yield "generic_2_xy_ec1_ec2_row.txt", with_blanks(generic_records(False, True, True))
    yield "generic_3_site_xy_ec1_row.txt", mixed(generic_records(True, False, True))
    yield "generic_4_site_xy_ec1_ec2_row.csv", with_commas(generic_records(True, True, True),
                                                           ["Site", "X", "Y", "Ec1", "Ec2", "Row"])
    yield "generic_5_xy_ec1.txt", in_columns(generic_records(False, False, False))
    yield "generic_6_xy_ec1_ec2.csv", with_commas(generic_records(False, True, False, garbled=""))
    yield "generic_7_site_xy_ec1.txt", with_tabs(generic_records(True, False, False))
    yield "generic_8_site_xy_ec1_ec2.txt", mixed(generic_records(True, True, False))


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parent
    for name, text in all_files():
        (folder / name).write_bytes(text.encode("ascii"))
        print(folder / name)


if __name__ == "__main__":
    main()
