"""What a run raises when the input or the output is to blame."""

from __future__ import annotations

import pathlib
from typing import TYPE_CHECKING

if TYPE_CHECKING:
    from .shapes import NamedPart


class InputError(RuntimeError):
    """An input that cannot be read or split; nothing was written, unless it changed meanwhile."""

    def __init__(
        self,
        sentence: str,
        path: pathlib.Path,
        kind: str | None = None,
        line: int | None = None,
        column: int | None = None,
        record: int | None = None,
    ) -> None:
        # All of them go into `args`, so that the exception comes out of another process whole.
        super().__init__(sentence, path, kind, line, column, record)
        self.sentence = sentence
        """What is wrong, in English."""
        self.path = path
        """The file, as it was given or found."""
        self.kind = kind
        """The kind of the finding, such as "empty_file"; None where there is no name for it."""
        self.line = line
        """The line in the input, from 1; None for a problem of the whole file."""
        self.column = column
        """The column in that line, in bytes from 1; None where there is no line."""
        self.record = record
        """The instance number concerned; None where there is none."""
        self.advice = ""
        """What to do, where an argument of the function helps or the sentence does not say it."""

    def __str__(self) -> str:
        place = self.path if self.line is None else f"{self.path}:{self.line}:{self.column}"
        return f"{place}: {self.sentence}{self.advice and ' '}{self.advice}"


class PartError(LookupError):
    """A name that no part has, or several; nothing was written."""

    def __init__(
        self, sentence: str, candidates: list[NamedPart], path: pathlib.Path | None = None
    ) -> None:
        super().__init__(sentence, candidates, path)
        self.sentence = sentence
        """What is wrong, in English, with the candidates."""
        self.candidates = candidates
        """The parts of that name, or those with the most similar names."""
        self.path = path
        """The input, as it was given."""
        self.advice = ""
        """What to do."""

    def __str__(self) -> str:
        line = self.sentence if self.path is None else f"{self.path}: {self.sentence}"
        return f"{line}{self.advice and ' '}{self.advice}"


class OutputError(RuntimeError):
    """An output file or folder that is there already, with `errno.EEXIST`, or that was not written
    whole. What was written is left as it is."""

    def __init__(self, sentence: str, path: pathlib.Path, errno: int) -> None:
        super().__init__(sentence, path, errno)
        self.sentence = sentence
        """What is wrong; holds the path."""
        self.path = path
        """The file or folder."""
        self.errno = errno
        """The system's reason, as in the module errno."""
        self.advice = ""
        """What to do, where an argument of the function helps."""

    def __str__(self) -> str:
        return f"{self.sentence}{self.advice and '; '}{self.advice}"
