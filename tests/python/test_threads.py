"""Several threads: the interpreter goes on during a split, and splits wait for each other."""

import threading
from concurrent.futures import ThreadPoolExecutor, wait

import velkstep


def data_of(folder):
    return {file.name: file.read_bytes().split(b"DATA;\n", 1)[1] for file in folder.glob("*.stp")}


def test_the_interpreters_lock_is_free_while_a_split_waits_for_another(lamp):
    # The first split is held in its progress function until the second one waits for its turn. If
    # that kept the lock, nothing here would go on.
    inside, second_started, leave = threading.Event(), threading.Event(), threading.Event()

    def hold(stage, done, total):
        inside.set()
        assert leave.wait(timeout=60)

    def second():
        second_started.set()
        return velkstep.split(lamp, "second")

    with ThreadPoolExecutor(2) as pool:
        first = pool.submit(velkstep.split, lamp, "first", progress=hold)
        assert inside.wait(timeout=60)
        other = pool.submit(second)
        assert second_started.wait(timeout=60)
        assert wait([other], timeout=0.2).not_done == {other}
        leave.set()
        assert len(first.result(timeout=60)) == len(other.result(timeout=60)) == 14


def test_many_threads_write_what_one_writes(lamp, folder):
    velkstep.split(lamp, "alone")
    expected = data_of(folder / "alone")
    with ThreadPoolExecutor(4) as pool:
        jobs = [pool.submit(velkstep.split, lamp, f"out{i}") for i in range(12)]
        trees = [pool.submit(velkstep.tree, lamp) for _ in range(12)]
    assert all(len(job.result()) == 14 for job in jobs)
    assert all(tree.result() == trees[0].result() for tree in trees)
    for i in range(12):
        assert data_of(folder / f"out{i}") == expected
