#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes back.avi, shown while a package is put together: report sheets fly from a folder into an envelope.

usage: make_animation.py OUTPUT.avi

The frames are drawn here and stored as they are, so the file is the same, byte for byte, wherever it is made.
"""
import math
import struct
import sys

from canvas import Canvas

WIDTH, HEIGHT, FRAMES, FRAMES_A_SECOND = 272, 60, 24, 12
SHEETS = 3

PAPER, INK, EDGE = (255, 255, 255), (150, 163, 184), (120, 134, 158)
BACKGROUND, GROUND = (240, 243, 248), (214, 221, 232)
FOLDER_BACK, FOLDER_FRONT, FOLDER_EDGE = (214, 158, 62), (246, 199, 104), (168, 118, 34)
ENVELOPE_INSIDE, ENVELOPE, ENVELOPE_EDGE = (47, 93, 150), (94, 146, 209), (31, 66, 112)
BARS = ((226, 92, 80), (80, 168, 112), (60, 120, 190))

FOLDER_X, ENVELOPE_X, FLIGHT_Y, SUNK_Y = 38, 234, 19, 41
LIFT = 0.18  # share of the way that a sheet rises from the folder, and as much sinks into the envelope


def ease(share):
    return share * share * (3 - 2 * share)


def sheet_place(share):
    """Middle and tilt, in degrees, of a sheet that has done `share` of its way."""
    if share < LIFT:
        return FOLDER_X, SUNK_Y + (FLIGHT_Y - SUNK_Y) * ease(share / LIFT), 0.0
    if share > 1 - LIFT:
        return ENVELOPE_X, FLIGHT_Y + (SUNK_Y - FLIGHT_Y) * ease((share - 1 + LIFT) / LIFT), 0.0
    flown = (share - LIFT) / (1 - 2 * LIFT)
    x = FOLDER_X + (ENVELOPE_X - FOLDER_X) * ease(flown)
    return x, FLIGHT_Y + 3 * math.sin(2 * math.pi * flown), 12 * math.sin(2 * math.pi * flown)


def draw_sheet(canvas, share, number):
    x, y, tilt = sheet_place(share)
    turn = math.radians(tilt)
    cosine, sine = math.cos(turn), math.sin(turn)

    def box(left, top, right, bottom, colour):
        corners = ((left, top), (right, top), (right, bottom), (left, bottom))
        canvas.polygon([(x + px * cosine - py * sine, y + px * sine + py * cosine) for px, py in corners], colour)

    box(-10, -13, 10, 13, EDGE)
    box(-9, -12, 9, 12, PAPER)
    box(-7, -10, 3, -8, BARS[number % len(BARS)])
    for line in range(3):
        box(-7, -6 + 3 * line, 7 if line < 2 else 2, -5 + 3 * line, INK)
    for bar, height in enumerate((4, 7, 5)):
        box(-6 + 4 * bar, 10 - height, -3 + 4 * bar, 10, BARS[(bar + number) % len(BARS)])


def rectangle(canvas, left, top, right, bottom, colour):
    canvas.polygon([(left, top), (right, top), (right, bottom), (left, bottom)], colour)


def draw_backs(canvas):
    rectangle(canvas, 0, 0, WIDTH, HEIGHT, BACKGROUND)
    rectangle(canvas, 0, 55, WIDTH, HEIGHT, GROUND)
    canvas.polygon([(16, 20), (19, 17), (32, 17), (36, 21), (60, 21), (60, 55), (16, 55)], FOLDER_EDGE)
    canvas.polygon([(17, 21), (19.5, 18), (31.5, 18), (35.5, 22), (59, 22), (59, 54), (17, 54)], FOLDER_BACK)
    canvas.polygon([(210, 30), (234, 14), (258, 30), (258, 55), (210, 55)], ENVELOPE_EDGE)
    canvas.polygon([(211, 30.5), (234, 15.2), (257, 30.5), (257, 54), (211, 54)], ENVELOPE_INSIDE)


def draw_fronts(canvas):
    canvas.polygon([(13, 32), (63, 32), (60, 55), (16, 55)], FOLDER_EDGE)
    canvas.polygon([(14.2, 33), (61.8, 33), (59.1, 54), (16.9, 54)], FOLDER_FRONT)
    rectangle(canvas, 30, 38, 46, 44, FOLDER_EDGE)
    rectangle(canvas, 31, 39, 45, 43, PAPER)
    canvas.polygon([(210, 30), (234, 46), (258, 30), (258, 55), (210, 55)], ENVELOPE_EDGE)
    canvas.polygon([(211, 32), (234, 47.2), (257, 32), (257, 54), (211, 54)], ENVELOPE)
    canvas.polygon([(211, 54), (231, 43.6), (234, 45.6), (237, 43.6), (257, 54)], ENVELOPE_EDGE)
    canvas.polygon([(214, 54), (234, 43.8), (254, 54)], ENVELOPE)


def frame(number):
    canvas = Canvas(WIDTH, HEIGHT)
    draw_backs(canvas)
    for sheet in range(SHEETS):
        draw_sheet(canvas, (number / FRAMES + sheet / SHEETS) % 1.0, sheet)
    draw_fronts(canvas)
    return canvas.bottom_up_bgr()


def chunk(kind, data):
    return kind + struct.pack("<I", len(data)) + data + b"\0" * (len(data) % 2)


def avi(frames):
    size = len(frames[0])
    main = struct.pack("<14I", 1000000 // FRAMES_A_SECOND, size * FRAMES_A_SECOND, 0, 0x10, len(frames), 0, 1, size,
                       WIDTH, HEIGHT, 0, 0, 0, 0)
    stream = struct.pack("<4s4sIHHIIIIIIII4H", b"vids", b"DIB ", 0, 0, 0, 0, 1, FRAMES_A_SECOND, 0, len(frames), size,
                         0, 0, 0, 0, WIDTH, HEIGHT)
    picture = struct.pack("<IiiHHIIiiII", 40, WIDTH, HEIGHT, 1, 24, 0, size, 0, 0, 0, 0)
    head = chunk(b"LIST", b"hdrl" + chunk(b"avih", main)
                 + chunk(b"LIST", b"strl" + chunk(b"strh", stream) + chunk(b"strf", picture)))
    movie, index, place = b"movi", b"", 4
    for data in frames:
        index += struct.pack("<4sIII", b"00db", 0x10, place, len(data))
        movie += chunk(b"00db", data)
        place += 8 + len(data) + len(data) % 2
    return chunk(b"RIFF", b"AVI " + head + chunk(b"LIST", movie) + chunk(b"idx1", index))


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    with open(sys.argv[1], "wb") as file:
        file.write(avi([frame(number) for number in range(FRAMES)]))


if __name__ == "__main__":
    main()
