"""Splits STEP files (ISO 10303-21) that hold a product assembly into one file per part.

Paths are str or os.PathLike. The interpreter's lock is released while a function runs, but the
library does one thing at a time in one process: calls from several threads wait for each other, and
a progress function that calls the module gets a RuntimeError. Split on several cores with processes.
"""

from ._functions import (
    CLASSIC,
    Assemblies,
    Follow,
    Names,
    Progress,
    Reading,
    References,
    Stage,
    StrPath,
    View,
    check,
    diff,
    drawing,
    extract,
    info,
    join,
    overview,
    picture,
    shrink,
    split,
    tree,
    verify,
)
from .errors import InputError, OutputError, PartError

__all__ = [
    "CLASSIC",
    "Assemblies",
    "Follow",
    "InputError",
    "Names",
    "OutputError",
    "PartError",
    "Progress",
    "Reading",
    "References",
    "Stage",
    "StrPath",
    "View",
    "check",
    "diff",
    "drawing",
    "extract",
    "info",
    "join",
    "overview",
    "picture",
    "shrink",
    "split",
    "tree",
    "verify",
]
