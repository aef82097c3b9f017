#!/usr/bin/env python3
"""The downloadable archive: scripts/package run on the Windows build's
programs, then its contents checked as a Windows user would get them.

Usage: package_check.py REPOSITORY_ROOT
       package_check.py REPOSITORY_ROOT --key-list FILE   (that list alone)
"""
import re
import struct
import subprocess
import sys
import tempfile
import zipfile
from pathlib import Path

ROOT = Path(sys.argv[1]).resolve()
WINE_RUN = ROOT / "scripts" / "wine-run"
MAX_EXE_BYTES = 1536 * 1024
SAMPLES = [
    "1_記録した操作.txt",
    "2_ループと分岐.txt",
    "3_変数と関数.txt",
    "4_ウィンドウ操作.txt",
    "5_日本語の貼り付け.txt",
]
EXPECTED_FILES = sorted(
    ["Kestrelix.exe", "kx.exe", "ReadMe.txt", "操作記録名一覧.txt", "Macro/"]
    + ["Macro/" + s for s in SAMPLES]
)
BOM = b"\xef\xbb\xbf"

failures = []


def check(what, ok, detail=""):
    if not ok:
        failures.append(what)
        print(f"FAIL: {what} {detail}")


def kx(folder, *args):
    done = subprocess.run(
        [str(WINE_RUN), str(folder / "kx.exe"), *args],
        cwd=folder,
        capture_output=True,
        timeout=120,
    )
    return done.returncode, done.stdout.decode("utf-8", "replace").replace("\r", "")


def windows_text(what, data):
    """UTF-8 with a byte-order mark, CR LF line ends and no bare CR or LF."""
    check(f"{what} starts with a byte-order mark", data.startswith(BOM))
    try:
        data[len(BOM):].decode("utf-8")
    except UnicodeDecodeError as e:
        check(f"{what} decodes as UTF-8", False, str(e))
    check(f"{what} has CR LF line ends only",
          data.count(b"\n") == data.count(b"\r\n") == data.count(b"\r") > 0)
    return data[len(BOM):].decode("utf-8", "replace")


def resource_versions(exe):
    """The fixed file version and the FileVersion / ProductVersion strings of
    the executable's version resource."""
    data = exe.read_bytes()
    fixed = data.find(struct.pack("<I", 0xFEEF04BD))
    if fixed < 0:
        return None, {}
    ms, ls = struct.unpack_from("<II", data, fixed + 8)
    numbers = f"{ms >> 16}.{ms & 0xFFFF}.{ls >> 16}.{ls & 0xFFFF}"
    strings = {}
    for key in ("FileVersion", "ProductVersion"):
        at = data.find((key + "\0").encode("utf-16-le"), fixed)
        if at < 0:
            continue
        at += len(key + "\0") * 2
        at += (4 - at % 4) % 4  # values are aligned on 32 bits
        end = at
        while data[end:end + 2] != b"\0\0":
            end += 2
        strings[key] = data[at:end].decode("utf-16-le")
    return numbers, strings


def vocabulary():
    """The words of the vocabulary tables, read from their sources: play-side
    table words, record-side names (with the ranges the code writes), and the
    mouse line forms."""
    keys = (ROOT / "src/input/key_names.cpp").read_text(encoding="utf-8")
    unescape = lambda s: s.replace("\\\\", "\\")
    play = {unescape(w) for w in re.findall(r'WordEntry\{"((?:[^"\\]|\\.)*)"', keys)}
    named = [unescape(w) for w in re.findall(r'\{\d+, "((?:[^"\\]|\\.)*)"\}', keys)]
    recorded = set(named)
    recorded |= {n[: -len(" Down")] + " Up" for n in named if n.endswith(" Down")}
    recorded |= {str(d) for d in range(10)} | {chr(c) for c in range(ord("A"), ord("Z") + 1)}
    recorded |= {f"Numpad{d}" for d in range(10)} | {f"F{n}" for n in range(1, 17)}
    numbered = {f"numpad{d}" for d in range(10)} | {f"f{n}" for n in range(1, 25)}
    lines = (ROOT / "src/input/input_lines.cpp").read_text(encoding="utf-8")
    buttons = re.findall(r"\{'[lrm]', \"([LRM])\"", lines)
    places = re.findall(r'\{"(?:se|cl)", "(\w+)"', lines)
    actions = re.findall(r'\{"(?:down|up|double)", "(\w+)"', lines)
    pointer = re.search(r"kPointerLines\[\] = \{(.*?)\};", lines, re.S).group(1)
    mouse = {f"{b}{p} {a} (x,y)" for b in buttons for p in places for a in actions}
    mouse |= set(re.findall(r'"([^"]+)"', pointer))
    check("the mouse tables were read", len(mouse) == 3 * 2 * 3 + 5, str(sorted(mouse)))
    return [recorded, play, numbered, mouse]


def key_list_sections(text):
    """Entries (lines indented by two blanks) under each ■ heading."""
    sections = []
    for line in text.split("\r\n"):
        if line.startswith("■"):
            sections.append([])
        elif line.startswith("  ") and sections:
            sections[-1].append(line[2:])
    return sections


def main():
    with tempfile.TemporaryDirectory() as tmp:
        tmp = Path(tmp)
        made = subprocess.run(
            [str(ROOT / "scripts/package"), "--no-build", "--out", str(tmp / "dist")],
            capture_output=True, text=True, timeout=300)
        check("scripts/package succeeds", made.returncode == 0, made.stderr)
        if made.returncode != 0:
            return
        archive = Path(made.stdout.strip().splitlines()[-1])
        with zipfile.ZipFile(archive) as z:
            names = sorted(z.namelist())
            check("the archive's files", names == EXPECTED_FILES, f"{names}")
            utf8_flagged = all(i.flag_bits & 0x800 for i in z.infolist() if not i.filename.isascii())
            check("Japanese file names are flagged UTF-8", utf8_flagged)
            app = tmp / "app"
            z.extractall(app)

        exe = app / "Kestrelix.exe"
        size = exe.stat().st_size
        check("Kestrelix.exe is under 1.5 MB", size < MAX_EXE_BYTES, f"({size} bytes)")
        print(f"archive {archive.name}: {archive.stat().st_size} bytes")
        for f in sorted(app.rglob("*")):
            if f.is_file():
                print(f"  {f.relative_to(app)}  {f.stat().st_size}")

        status, out = kx(app, "--version")
        match = re.fullmatch(r"Kestrelix (\d+)\.(\d+)\.(\d+)\n", out)
        check("kx --version", status == 0 and match is not None, repr(out))
        version = ".".join(match.groups()) if match else "?"
        check("the archive's name carries the version", archive.name == f"Kestrelix-{version}.zip",
              archive.name)
        numbers, strings = resource_versions(exe)
        check("the fixed file version", numbers == version + ".0", f"{numbers} vs {version}")
        check("the version strings", strings == {"FileVersion": version, "ProductVersion": version},
              str(strings))

        for sample in SAMPLES:
            path = f"Macro/{sample}"
            windows_text(path, (app / path).read_bytes())
            status, out = kx(app, "lint", path)
            check(f"{sample} lints clean", status == 0 and out == "", out)
            status, out = kx(app, "run", "--dry", path)
            last = out.strip().splitlines()[-1] if out.strip() else ""
            check(f"{sample} plays to its end", status == 0 and '"reason":"completed"' in last, last)

        # With a Notepad window present the window sample takes its main branch.
        status, out = kx(app, "run", "--dry", "--window", "Notepad,無題 - メモ帳",
                         f"Macro/{SAMPLES[3]}")
        check("the window sample moves the window it found", '"ev":"move"' in out, out[-300:])

        readme = windows_text("ReadMe.txt", (app / "ReadMe.txt").read_bytes())
        check("ReadMe.txt names the version", f"バージョン {version}" in readme)
        check("ReadMe.txt has no placeholder left", "@" + "VERSION@" not in readme
              and "@" + "HOMEPAGE@" not in readme)
        for sample in SAMPLES:
            check(f"ReadMe.txt lists {sample}", sample in readme)

        check_key_list(app / "操作記録名一覧.txt")


def check_key_list(path):
    """Every word of the vocabulary tables in its section, and nothing else."""
    text = windows_text(path.name, path.read_bytes())
    sections = key_list_sections(text)
    expected = vocabulary()
    titles = ["recorded names", "play-side words", "numbered words", "mouse lines"]
    check("the key list's sections", len(sections) == len(expected), str(len(sections)))
    for title, got, want in zip(titles, sections, expected):
        check(f"key list, {title}: no repeats", len(got) == len(set(got)))
        check(f"key list, {title}", set(got) == want,
              f"missing {sorted(want - set(got))} extra {sorted(set(got) - want)}")


if len(sys.argv) == 4 and sys.argv[2] == "--key-list":
    check_key_list(Path(sys.argv[3]))
else:
    main()
if failures:
    print(f"{len(failures)} check(s) failed")
    sys.exit(1)
print("all passed")
