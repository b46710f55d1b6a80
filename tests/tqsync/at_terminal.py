#!/usr/bin/env python3
"""Runs a program at a terminal of its own, types answers and prints what the screen showed.

  at_terminal.py ANSWERS PROGRAM [ARGUMENT...]

ANSWERS are separated by "|"; each is typed when the screen ends in "] ", as questions do. When they
are used up, or where one is "^D", the input ends. The status is the program's.
"""

import os
import pty
import sys


def main():
    answers = sys.argv[1].split("|")
    child, terminal = pty.fork()
    if child == 0:
        os.execv(sys.argv[2], sys.argv[2:])
    screen = b""
    while True:
        try:
            got = os.read(terminal, 4096)
        except OSError:  # the program has gone
            break
        if not got:
            break
        screen += got
        if got.endswith(b"] "):
            answer = answers.pop(0) if answers else "^D"
            os.write(terminal, b"\x04" if answer == "^D" else answer.encode() + b"\n")
    status = os.waitstatus_to_exitcode(os.waitpid(child, 0)[1])
    sys.stdout.buffer.write(screen.replace(b"\r", b""))
    sys.exit(status)


if __name__ == "__main__":
    main()
