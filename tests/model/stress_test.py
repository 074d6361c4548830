#!/usr/bin/env python3
"""Two sessions of the editor and another program write one Wincmd.ini at the same time, and nothing may get lost.

    stress_test.py WRITES PROGRAM...

Each of the three sets one key after the other, WRITES in all. A line of its log is a key, its value, the times of the
read or of the start of the save and of the end, and what came of it. The other program writes in place, in two pieces,
or renames a file of its own over it; only what such a rename brings back from an older read may be gone in the end.
For Windows the program itself is that other program; natively it is here, and flock stands in for the share modes.
"""
import collections
import fcntl
import os
import pathlib
import random
import re
import subprocess
import sys
import tempfile
import time

SIDES = ("One", "Two", "Theirs")
END = b"[Configuration]\r\nWhole=1\r\n"


def prepare(folder: pathlib.Path, writes: int) -> None:
    """Every second key is in the file already. A category has no more keys than its buffer takes."""
    data = settings = ""
    for side in SIDES:
        settings += f"[{side}]\r\n"
        for number in range(1, writes + 1):
            data += f"[{side} {number}]\r\nCategoryTargetSection={side}\r\n" if number % 100 == 1 else ""
            data += f"{side}{number}=0\r\n"
            settings += f"{side}{number}=0\r\n" if number % 2 else ""
    (folder / "keys.tmdf").write_bytes(data.encode())
    (folder / "Wincmd.ini").write_bytes(settings.encode() + END)


def parse(path: pathlib.Path) -> dict[str, str]:
    """The values of a file, which must be whole."""
    data = path.read_bytes()
    lines = data.decode().split("\r\n")[:-1]
    assert data.endswith(END) and all(re.fullmatch(r"\[\w+\]|\w+=\d+", line) for line in lines), f"{path.name} is torn"
    pairs = [line.split("=") for line in lines if "=" in line]
    assert len(dict(pairs)) == len(pairs), f"{path.name} has keys twice"
    return dict(pairs)


def now() -> int:
    return time.time_ns() // 100


def changed(data: bytes, number: int) -> bytes:
    assert data.endswith(END), "another program has read a file that is not whole"
    data = data.replace(b"\r\nTheirs%d=0\r\n" % number, b"\r\n")
    return data.replace(b"[Theirs]\r\n", b"[Theirs]\r\nTheirs%d=%d\r\n" % (number, number))


def open_in_place(path: pathlib.Path):
    end = time.monotonic() + 1
    while True:
        file = path.open("r+b", buffering=0)
        try:
            fcntl.flock(file, fcntl.LOCK_EX | fcntl.LOCK_NB)
            if os.path.samestat(os.fstat(file.fileno()), path.stat()):
                return file
        except BlockingIOError:
            pass
        file.close()
        assert time.monotonic() < end, "the file is held for a second"
        time.sleep(0.002)


def write_natively(folder: pathlib.Path, writes: int) -> None:
    path = folder / "Wincmd.ini"
    chance = random.Random(1)
    with (folder / "Theirs.log").open("w") as log:
        for number in range(1, writes + 1):
            if number % 2:
                with open_in_place(path) as file:
                    read = now()
                    data = changed(file.read(), number)
                    file.seek(0)
                    file.truncate()
                    file.write(data[:len(data) // 2])
                    time.sleep(chance.uniform(0.001, 0.15))
                    file.write(data[len(data) // 2:])
            else:
                read = now()
                (folder / "theirs.tmp").write_bytes(changed(path.read_bytes(), number))
                time.sleep(chance.choice([0, 0, 0, 0.01]))
                (folder / "theirs.tmp").rename(path)
            log.write(f"Theirs{number} {number} {read} {now()} {'place' if number % 2 else 'rename'}\n")
            time.sleep(chance.uniform(0, 0.06))


def run(program: list[str], folder: pathlib.Path, writes: int) -> list[list[int]]:
    """Runs all three; what each session says in the end: rows, rows that differ from the file, questions."""
    sides = SIDES if program[-1].endswith(".exe") else SIDES[:2]
    end = time.monotonic() + 60 + writes
    processes = [subprocess.Popen([*program, side, str(writes)], cwd=folder, stdout=subprocess.PIPE, text=True)
                 for side in sides]

    def wait_until(is_so) -> None:
        while not all(is_so(folder / f"{side}.log") for side in sides):
            assert not any(process.poll() for process in processes), "a program has ended with an error"
            assert time.monotonic() < end, "it takes too long"
            time.sleep(0.05)

    try:
        wait_until(lambda log: log.exists())
        (folder / "go").touch()
        if len(sides) < len(SIDES):
            write_natively(folder, writes)
        done = re.compile(r"\w+ %d \d+ \d+ (saved|place|rename)\n" % writes)
        wait_until(lambda log: done.search(log.read_text()))
        (folder / "stop").touch()
        outputs = [process.communicate(timeout=60)[0] for process in processes]
        assert not any(process.returncode for process in processes), "a program has ended with an error"
    finally:
        for process in processes:
            process.kill()
    return [[int(number) for number in output.split()] for output in outputs[:2]]


def main(writes: int, program: list[str]) -> None:
    begun = time.monotonic()
    memory = "/dev/shm" if pathlib.Path("/dev/shm").is_dir() else None
    with tempfile.TemporaryDirectory(dir=memory) as name:
        folder = pathlib.Path(name)
        prepare(folder, writes)
        rows = run(program, folder, writes)
        entries = [line.split(maxsplit=4) for side in SIDES
                   for line in (folder / f"{side}.log").read_text().splitlines()]
        values = parse(folder / "Wincmd.ini")
        backups = [parse(path) for path in (folder / "Wincmd.ini backups").iterdir()]
        left = [path.name for path in folder.glob("**/*.~*")]
    renames = [(int(entry[2]), int(entry[3])) for entry in entries if entry[4] == "rename"]
    counts: collections.Counter[str] = collections.Counter()
    lost = []
    for key, value, start, end, outcome in entries:
        counts[outcome] += 1
        if outcome in ("saved", "place", "rename") and values.get(key) != value:
            # A save was over before its end was written down.
            is_older = any(read < int(end) and int(start) < renamed for read, renamed in renames)
            if outcome == "saved" and is_older:
                counts["overwritten"] += 1
            else:
                lost.append(f"{key} {start} {end} {outcome}")
    print(f"{counts['saved']} saves by two sessions beside {counts['place']} writes in place and {counts['rename']} "
          f"renames by another program, in {time.monotonic() - begun:.0f} s")
    for outcome, count in counts.items():
        if outcome.startswith("failed"):
            print(f"{count:6} x tried again: {outcome}")
    print(f"lost {len(lost)}; overwritten from an older read {counts['overwritten']}; rows {rows[0][0]}, that differ "
          f"{rows[0][1] + rows[1][1]}; questions {rows[0][2] + rows[1][2]}; backups {len(backups)}")
    assert not lost, lost[:9]
    assert rows == [[3 * writes, 0, 0]] * 2, rows
    assert counts["saved"] == 2 * writes and counts["place"] + counts["rename"] == writes, counts
    assert not left, left
    assert 1 <= len(backups) <= 11, len(backups)


if __name__ == "__main__":
    main(int(sys.argv[1]), [str(pathlib.Path(part).resolve()) for part in sys.argv[2:]])
