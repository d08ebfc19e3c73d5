# SPDX-License-Identifier: GPL-3.0-or-later
"""set_time.py BOOK.chm: replaces the times at which the book was compiled, so that the same pages give the same bytes.

One is in the header of the file, a number in big-endian order at byte 16. The other is entry 10 of the stream #SYSTEM,
before entry 9, the name of the compiler. The compiler has no option for either.
"""
import pathlib
import re
import sys

ENTRY = re.compile(rb"(?<=\x0a\x00\x04\x00)....(?=\x09\x00..HHA Version )", re.DOTALL)


def main():
    path = pathlib.Path(sys.argv[1])
    book = path.read_bytes()
    book, found = ENTRY.subn(bytes(4), book)
    if book[:4] != b"ITSF" or found != 1:
        sys.exit(f"set_time.py: {path} is no help book with one time of its making")
    path.write_bytes(book[:16] + bytes(4) + book[20:])


if __name__ == "__main__":
    main()
