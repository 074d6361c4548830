#!/usr/bin/env python3
"""Kills a program that saves in a loop, and looks at its files after each time.

    kill_test.py KILLS PROGRAM...

The file, or where its replacement has stopped halfway the old one beside it, must be whole, and so must every backup.
The program itself checks what it reads when it starts again: it ends with an error if that is not whole or is missing.
"""
import collections
import pathlib
import random
import subprocess
import sys
import tempfile
import time

WAIT_SECONDS = 30


def is_whole(data: bytes) -> bool:
    lines = data.split(b"\n")
    save, _, count = lines[0].partition(b" ")
    return count.isdigit() and lines[1:] == [save] * int(count) + [b""]


def state_of(folder: pathlib.Path) -> str:
    """What a kill has left; raises an error if no whole copy is where it has to be."""
    for backup in folder.glob("settings.ini backups/*.ini"):
        assert is_whole(backup.read_bytes()), f"{backup.name} is not whole"
    names = {path.name for path in folder.glob("**/settings.ini.~*")}
    path = folder / "settings.ini"
    if not path.exists():
        path = next(folder.glob("settings.ini backups/settings.ini.~old-*"))
    assert is_whole(path.read_bytes()), f"{path.name} is not whole"
    kinds = sorted({name.split(".~")[1][:3] for name in names})
    return f"{path.name.split('-')[0]} whole, beside it {' and '.join(kinds) or 'nothing'}"


def stamp_of(path: pathlib.Path) -> int | None:
    try:
        return path.stat().st_mtime_ns
    except FileNotFoundError:
        return None


def kill_once(program: list[str], folder: pathlib.Path) -> None:
    path = folder / "settings.ini"
    before = stamp_of(path)
    process = subprocess.Popen(program, cwd=folder)
    try:
        end = time.monotonic() + WAIT_SECONDS
        while stamp_of(path) in (before, None):
            assert process.poll() is None, f"the program has ended with {process.returncode}"
            assert time.monotonic() < end, "the program does not save"
        time.sleep(random.uniform(0, 0.02))
        assert process.poll() is None, f"the program has ended with {process.returncode}"
    finally:
        process.kill()
        process.wait()


def main(kills: int, program: list[str]) -> None:
    states: collections.Counter[str] = collections.Counter()
    memory = "/dev/shm" if pathlib.Path("/dev/shm").is_dir() else None
    with tempfile.TemporaryDirectory(dir=memory) as name:
        folder = pathlib.Path(name)
        # Wine's server begins to end with its last program, and a start that falls into that fails.
        waiting = subprocess.Popen([*program, "wait"], cwd=folder)
        try:
            for _ in range(kills):
                kill_once(program, folder)
                states[state_of(folder)] += 1
        finally:
            (folder / "stop").touch()
            waiting.wait(WAIT_SECONDS)
        subprocess.run(program, cwd=folder, check=True, timeout=WAIT_SECONDS)
        left = sorted(path.name for path in folder.iterdir())
        assert left == ["settings.ini", "settings.ini backups", "stop"], left
        saves = (folder / "settings.ini").read_bytes().split()[0].decode()
    print(f"{kills} kills during {saves} saves; each left a whole copy, which the next start has read:")
    for state, count in states.most_common():
        print(f"{count:6} x {state}")


if __name__ == "__main__":
    main(int(sys.argv[1]), [str(pathlib.Path(part).resolve()) for part in sys.argv[2:]])
