"""The progress function: what it is told, and that an exception of its ends the split."""

import signal
import sys
from pathlib import Path

import pytest
import velkstep


def test_stages_come_in_order_and_end_at_their_totals(lamp):
    told = []
    velkstep.split(lamp, "out", progress=lambda *what: told.append(what))
    stages = [stage for stage, _, _ in told]
    assert sorted(set(stages), key=stages.index) == ["reading", "sorting", "writing"]
    assert stages == sorted(stages)
    assert all(0 <= done <= total for _, done, total in told)
    size = lamp.stat().st_size
    assert {total for stage, _, total in told if stage != "sorting"} == {size}


@pytest.mark.parametrize("at", ["reading", "sorting", "writing"])
@pytest.mark.parametrize("kind", [KeyError, KeyboardInterrupt, velkstep.InputError])
def test_what_it_raises_comes_out_unchanged(lamp, at, kind):
    raised = kind("stop", "here")
    calls = []

    def stop(stage, done, total):
        calls.append(stage)
        if stage == at:
            raise raised

    with pytest.raises(kind) as caught:
        velkstep.split(lamp, "out", progress=stop)
    assert caught.value is raised
    assert calls.count(at) == 1
    assert calls[-1] == at

    # The next split begins anew.
    assert len(velkstep.split(lamp, "again")) == 14


def test_must_be_callable(lamp):
    with pytest.raises(TypeError, match="^progress: neither a function nor None$"):
        velkstep.split(lamp, "out", progress="yes")
    assert not Path("out").exists()


def test_no_reference_is_kept_or_lost(lamp):
    def progress(stage, done, total):
        pass

    before = sys.getrefcount(progress)
    for i in range(3):
        velkstep.split(lamp, f"out{i}", progress=progress)
    assert sys.getrefcount(progress) == before


@pytest.mark.parametrize(
    "call",
    [
        lambda lamp: velkstep.split(lamp, "inner"),
        lambda lamp: velkstep.tree(lamp),
        lambda lamp: velkstep.info(lamp),
    ],
)
def test_the_module_is_not_to_be_called_from_it(lamp, call):
    message = "^velkstep is not to be called from a progress function$"
    with pytest.raises(RuntimeError, match=message):
        velkstep.split(lamp, "out", progress=lambda *_: call(lamp))
    assert len(velkstep.split(lamp, "again")) == 14


def test_a_signal_ends_a_split_that_nobody_watches(assembly):
    class Alarm(Exception):
        pass

    def handler(number, frame):
        raise Alarm

    # Some twenty megabytes, so that the split is still reading when the signal comes.
    records = "".join(f"#{i}=A(#{i + 1});\n" for i in range(100, 1_000_000))
    text = assembly.read_text()
    Path("large.stp").write_text(text.replace("DATA;\n", "DATA;\n" + records))

    before = signal.signal(signal.SIGALRM, handler)
    try:
        with pytest.raises(Alarm):
            signal.setitimer(signal.ITIMER_REAL, 0.005)
            velkstep.split("large.stp", "out")
    finally:
        signal.signal(signal.SIGALRM, before)
    assert not Path("roots.txt").exists()
