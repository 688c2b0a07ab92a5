"""Failures that a person at a shell can do something about."""


class Failure(Exception):
    """One line that names the thing; ends the program with this status."""

    def __init__(self, line, status=1):
        super().__init__(" ".join(str(line).split()))
        self.status = status


def last_line(text):
    """The last line of a program's messages, which says why it ended; "" when it said nothing."""
    lines = [line.strip() for line in text.splitlines() if line.strip()]
    return lines[-1] if lines else ""
