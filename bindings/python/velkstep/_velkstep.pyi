import os
import pathlib
from typing import Callable, Optional, Union

from .shapes import (
    Checked,
    Difference,
    Drawing,
    Extracted,
    Info,
    Joined,
    Overview,
    Picture,
    Shrunk,
    Tree,
    Verification,
)

_StrPath = Union[str, "os.PathLike[str]"]

def split(
    input: _StrPath,
    outdir: _StrPath,
    assemblies: str,
    names: str,
    reading: str,
    progress: Optional[Callable[..., object]],
    shrink: bool,
    references: str,
    follow_outside: bool,
) -> list[pathlib.Path]: ...
def tree(input: _StrPath, names: str, references: str, follow_outside: bool) -> Tree: ...
def info(input: _StrPath, references: str, follow_outside: bool) -> Info: ...
def check(
    input: _StrPath, progress: Optional[Callable[..., object]], references: str, follow_outside: bool
) -> Checked: ...
def overview(
    input: _StrPath,
    tolerance: Optional[float],
    names: str,
    progress: Optional[Callable[..., object]],
    references: str,
    follow_outside: bool,
) -> Overview: ...
def picture(
    input: _StrPath,
    out: _StrPath,
    part: str,
    view: str,
    replace: bool,
    progress: Optional[Callable[..., object]],
    references: str,
    follow_outside: bool,
) -> Picture: ...
def drawing(
    input: _StrPath,
    tolerance: float,
    names: str,
    progress: Optional[Callable[..., object]],
    references: str,
    follow_outside: bool,
) -> Drawing: ...
def join(
    root: _StrPath,
    out: _StrPath,
    replace: bool,
    follow_outside: bool,
    progress: Optional[Callable[..., object]],
    shrink: bool,
    allow_missing: bool,
    allow_mixed_schemas: bool,
) -> Joined: ...
def shrink(
    input: _StrPath,
    out: _StrPath,
    replace: bool,
    drop_unreachable: bool,
    renumber: bool,
    progress: Optional[Callable[..., object]],
) -> Shrunk: ...
def extract(
    input: _StrPath,
    parts: list[str],
    out: _StrPath,
    is_folder: bool,
    bodies: bool,
    names: str,
    replace: bool,
    progress: Optional[Callable[..., object]],
    shrink: bool,
    references: str,
    follow_outside: bool,
) -> Extracted: ...
def diff(
    a: _StrPath, b: _StrPath, progress: Optional[Callable[..., object]]
) -> Difference: ...
def verify(
    input: _StrPath,
    outdir: _StrPath,
    progress: Optional[Callable[..., object]],
    references: str,
    follow_outside: bool,
) -> Verification: ...
