"""What to do about an error, in terms of the function that raised it."""

from __future__ import annotations

import contextlib
import errno
from collections.abc import Iterator, Mapping

from .errors import InputError, OutputError, PartError

# By the kind of an InputError, or for PartError and files that are there already.
FILE_EXISTS = "file exists"
NO_SUCH_PART = "no such part"

FOLLOW = {
    "missing_target": 'Put them there, or leave them out with references="keep".',
    "target_outside": "follow_outside=True reads them.",
}
JOIN = {
    "missing_target": "Put them there; allow_missing=True keeps what refers to them.",
    "target_outside": "follow_outside=True reads them.",
    "mixed_schemas": "allow_mixed_schemas=True takes them.",
    "missing_file": "Name a folder that a split wrote, or the file that refers to the others.",
    "wrong_split_list": "Name the root's file in place of the folder.",
}
NAMES = {NO_SUCH_PART: "velkstep.tree lists all parts."}
OTHER_FOLDER = {FILE_EXISTS: "split into a folder of its own"}


def replacing(replace: bool) -> dict[str, str]:
    """For a file that is there already. Where it may be replaced, nothing else is refused."""
    return {
        FILE_EXISTS: "it is the input, or a file that it refers to; name another"
        if replace
        else "replace=True replaces it"
    }


@contextlib.contextmanager
def advising(advice: Mapping[str, str]) -> Iterator[None]:
    """Gives errors that are raised inside their advice."""
    try:
        yield
    except InputError as error:
        error.advice = advice.get(error.kind or "", "")
        raise
    except PartError as error:
        error.advice = advice.get(NO_SUCH_PART, "")
        raise
    except OutputError as error:
        if error.errno == errno.EEXIST:
            error.advice = advice.get(FILE_EXISTS, "")
        raise
