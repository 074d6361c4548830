#!/usr/bin/env python3
"""Packs the built programs: archives, setup programs, their check sums, and manifests for package managers.

    make_packages.py VERSION PROGRAM_X64 PROGRAM_X86 ICON OUTPUT_FOLDER

Everything else comes from the repository. SOURCE_DATE_EPOCH, seconds since 1970, is the time that all packed files
bear; with the same sources, programs and time the packages have the same bytes. TAMARIND_RELEASE_URL is the folder
that the packages are downloaded from, packaging/release_url.txt if it is not set.
"""

import hashlib
import os
import shutil
import subprocess
import sys
import tempfile
import zipfile
from datetime import datetime, timezone
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
PACKAGING = ROOT / "packaging"
PROGRAM = "TamarindEditor.exe"
UNINSTALLER = "Uninstall.exe"
ARCHITECTURES = {"x64": "amd64-unicode", "x86": "x86-unicode"}  # and what NSIS calls them
FOLDERS = {"Data Files": ("*.tmdf", "*.types", "*.keywords"), "Languages": ("*.lng",)}
WINDOWS_EPOCH = 11644473600  # seconds from 1601, where Windows begins to count, to 1970


def filled(text, values):
    """The text with every @NAME@ replaced."""
    for name, value in values.items():
        text = text.replace(f"@{name}@", value)
    return text


def write_windows_text(path, text):
    path.write_text(text, encoding="utf-8", newline="\r\n")


def lay_out(folder, program, version, time):
    """Puts the files of a package into a new folder."""
    folder.mkdir()
    shutil.copyfile(program, folder / PROGRAM)
    for name, patterns in FOLDERS.items():
        (folder / name).mkdir()
        for pattern in patterns:
            for file in (ROOT / name).glob(pattern):
                shutil.copyfile(file, folder / name / file.name)
    subprocess.run([ROOT / "tools" / "make_help.sh", folder], check=True,
                   env={**os.environ, "SOURCE_DATE_EPOCH": str(time)})
    write_windows_text(folder / "License.txt", (ROOT / "LICENSE").read_text(encoding="utf-8"))
    readme = (PACKAGING / "Readme.txt").read_text(encoding="utf-8")
    write_windows_text(folder / "Readme.txt", filled(readme, {"VERSION": version}))
    for file in files_of(folder):
        os.utime(folder / file, (time, time))


def files_of(folder):
    """The files in a folder and below, relative to it and in an order that does not depend on the disk."""
    return sorted(file.relative_to(folder) for file in folder.rglob("*") if file.is_file())


def make_archive(path, folder, time):
    """A .zip whose entries have that time as local time, since the format knows no other."""
    stamp = datetime.fromtimestamp(time, timezone.utc).timetuple()[:6]
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for file in files_of(folder):
            entry = zipfile.ZipInfo(file.as_posix(), stamp)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 0  # packed for Windows: no Unix permissions
            archive.writestr(entry, (folder / file).read_bytes())


def quoted(path):
    """A path as a text of a setup script, with the separators of Windows if it is a relative one."""
    return '"' + str(path).replace("$", "$$") + '"'


def windows_path(path):
    return str(path).replace("/", "\\")


def file_macros(folder):
    """The part of the setup script that lists the files; packaging/setup.nsi tells what the macros are for."""
    files = files_of(folder)
    folders = sorted({file.parent for file in files} - {Path(".")})
    unpack = []
    for parent in [Path("."), *folders]:
        target = "" if parent == Path(".") else "\\" + windows_path(parent)
        unpack.append(f"SetOutPath {quoted('${FOLDER}' + target)}".replace("$$", "$"))
        unpack += [f"File {quoted(folder / file)}" for file in files if file.parent == parent]
    macros = {
        "UnpackFiles FOLDER": unpack,
        "ForEachFile FUNCTION": calls([*files, UNINSTALLER]),
        "ForEachFolder FUNCTION": calls(reversed(folders)),
    }
    return "".join(f"!macro {head}\n" + "".join(f"    {line}\n" for line in lines) + "!macroend\n"
                   for head, lines in macros.items())


def calls(paths):
    return [line for path in paths
            for line in (f"Push {quoted(windows_path(path))}", "Call ${FUNCTION}")]


def type_version(version):
    """The version as the program registers it with the file type: see RegisterFileType in app/WinMain.cpp."""
    major, minor, patch = version.split(".")
    return f"{major}.{minor}{patch}{patch}"


def make_setup(path, folder, architecture, version, icon, time):
    windows_time = (time + WINDOWS_EPOCH) * 10_000_000
    size = sum((folder / file).stat().st_size for file in files_of(folder))
    script = folder.with_suffix(".nsh")
    script.write_text(file_macros(folder), encoding="utf-8")
    values = {
        "TARGET": ARCHITECTURES[architecture],
        "VERSION": version,
        "TYPE_VERSION": type_version(version),
        "TIME": f"{windows_time >> 32:08X} {windows_time & 0xFFFFFFFF:08X}",
        "SIZE_KB": (size + 1023) // 1024,
        "ICON": icon,
        "FILES": script,
        "OUTPUT": path,
    }
    subprocess.run(["makensis", "-V2", "-WX", "-NOCD", "-INPUTCHARSET", "UTF8",
                    *(f"-D{name}={value}" for name, value in values.items()), PACKAGING / "setup.nsi"],
                   check=True, env={**os.environ, "SOURCE_DATE_EPOCH": str(time)})


def release_url(version):
    url = os.environ.get("TAMARIND_RELEASE_URL") or (PACKAGING / "release_url.txt").read_text().strip()
    return url.replace("<version>", version).rstrip("/")


def make_manifests(output, version, sums):
    """The manifests for Scoop and winget, from the templates in packaging/."""
    values = {"VERSION": version, "URL": release_url(version)}
    for name, digest in sums.items():
        kind = name.removeprefix(f"TamarindEditor-{version}-").partition(".")[0]  # such as x64-setup
        values[kind] = name
        values[kind + "-sha256"] = digest
    scoop = filled((PACKAGING / "scoop.json").read_text(encoding="utf-8"), values)
    (output / "tamarind-editor.json").write_text(scoop, encoding="utf-8")
    winget = output / "winget" / "manifests" / "t" / "Tamarind" / "ConfigurationEditor" / version
    winget.mkdir(parents=True)
    for template in sorted((PACKAGING / "winget").iterdir()):
        (winget / template.name).write_text(filled(template.read_text(encoding="utf-8"), values),
                                            encoding="utf-8")


def main():
    if len(sys.argv) != 6 or not os.environ.get("SOURCE_DATE_EPOCH"):
        print("usage: SOURCE_DATE_EPOCH=SECONDS make_packages.py VERSION PROGRAM_X64 PROGRAM_X86 ICON OUTPUT_FOLDER",
              file=sys.stderr)
        return 2
    version = sys.argv[1]
    programs = dict(zip(ARCHITECTURES, (Path(name).resolve() for name in sys.argv[2:4])))
    icon = Path(sys.argv[4]).resolve()
    output = Path(sys.argv[5]).resolve()
    # A .zip counts in steps of two seconds; the same time in both packages.
    time = int(os.environ["SOURCE_DATE_EPOCH"]) // 2 * 2

    shutil.rmtree(output, ignore_errors=True)
    output.mkdir(parents=True)
    packages = []
    with tempfile.TemporaryDirectory() as scratch:
        for architecture, program in programs.items():
            name = f"TamarindEditor-{version}-{architecture}"
            folder = Path(scratch) / architecture
            lay_out(folder, program, version, time)
            packages += [output / f"{name}-portable.zip", output / f"{name}-setup.exe"]
            make_archive(packages[-2], folder, time)
            make_setup(packages[-1], folder, architecture, version, icon, time)
    sums = {package.name: hashlib.sha256(package.read_bytes()).hexdigest() for package in packages}
    (output / "SHA256SUMS").write_text("".join(f"{digest}  {name}\n" for name, digest in sorted(sums.items())),
                                       encoding="ascii")
    make_manifests(output, version, sums)
    for package in packages:
        print(f"{package.stat().st_size:>9}  {package.name}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
