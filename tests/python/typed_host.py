"""A program that a type checker reads: what the module promises is enough for it."""

from __future__ import annotations

import pathlib

import velkstep


def split(source: pathlib.Path) -> list[str]:
    def progress(stage: str, done: int, total: int) -> None:
        print(stage, done / total)

    try:
        files = velkstep.split(source, "out", names="record", progress=progress)
        files += velkstep.split(source, "classic", **velkstep.CLASSIC)
    except velkstep.InputError as error:
        print(error.path, error.line, error.kind)
        return []
    except velkstep.OutputError as error:
        print(error.path, error.errno)
        return []
    return [file.name for file in files]


def names(source: str) -> list[str]:
    return [part["name"] for part in velkstep.tree(source)["parts"]]


def size(source: str) -> int:
    return velkstep.info(source)["bytes"]


def doubts(source: pathlib.Path) -> list[str]:
    return [finding["sentence"] for finding in velkstep.check(source)["findings"]]


def faults(source: pathlib.Path) -> list[tuple[str | None, int | None, str]]:
    findings = velkstep.verify(source, "out")["findings"]
    return [(finding["file"], finding["line"], finding["sentence"]) for finding in findings]
