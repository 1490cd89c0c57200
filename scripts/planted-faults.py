#!/usr/bin/env python3
"""Counts how many planted one-line faults a test program catches.

    scripts/planted-faults.py FAULTS WORK TEST_PROGRAM... [--platform DIR]

FAULTS is a Python file defining F, a list of (file under factorymanager/src, text, new
text); each text must occur once. For every fault, a copy of the tree's HEAD in WORK gets
that one change, its library is built (WORK/build, ccache makes it quick) and kept as
WORK/faults/N; then each test program runs against it (LD_LIBRARY_PATH, the first failing
test ends the run) and the fault counts as caught when the program fails. --platform
names the folder of the platform sim library the programs were built with. The faults
themselves are kept out of the tree.
"""
import argparse
import os
import pathlib
import shutil
import subprocess
import sys

root = pathlib.Path(__file__).resolve().parent.parent
args = argparse.ArgumentParser()
args.add_argument("faults")
args.add_argument("work", type=pathlib.Path)
args.add_argument("programs", nargs="+", type=pathlib.Path)
args.add_argument("--platform", type=pathlib.Path)
opts = args.parse_args()

scope = {}
exec(pathlib.Path(opts.faults).read_text(), scope)
faults = scope["F"]
src = opts.work / "src"
if not src.exists():
    src.mkdir(parents=True)
    archive = subprocess.run(["git", "-C", str(root), "archive", "HEAD"], check=True,
                             capture_output=True).stdout
    subprocess.run(["tar", "-x", "-C", str(src)], input=archive, check=True)
    subprocess.run(["cmake", "-S", str(src), "-B", str(src / "build"), "-G", "Ninja"],
                   check=True, capture_output=True)

caught = {str(p): 0 for p in opts.programs}
built = 0
for n, (name, text, new) in enumerate(faults):
    path = src / "factorymanager" / "src" / name
    clean = path.read_text()
    if clean.count(text) != 1:
        sys.exit(f"fault {n}: the text is not once in {name}")
    path.write_text(clean.replace(text, new))
    lib = opts.work / "faults" / str(n)
    lib.mkdir(parents=True, exist_ok=True)
    made = subprocess.run(["ninja", "-C", str(src / "build"), "vq27_factory"],
                          capture_output=True)
    path.write_text(clean)
    os.utime(path)  # the next build must see the file back as it was
    if made.returncode != 0:
        print(f"{n} does not build")
        continue
    built += 1
    shutil.copy(src / "build" / "factorymanager" / "libvq27_factory.so.1", lib)
    env = dict(os.environ, LD_LIBRARY_PATH=":".join(
        [str(lib)] + ([str(opts.platform)] if opts.platform else [])))
    row = [str(n)]
    for program in opts.programs:
        run = subprocess.run([str(program), "--gtest_fail_fast", "--gtest_brief=1"],
                             cwd=program.parent, env=env, capture_output=True, timeout=900)
        caught[str(program)] += run.returncode != 0
        row.append("caught" if run.returncode != 0 else "MISSED")
    print(" ".join(row), flush=True)

for program, count in caught.items():
    print(f"{program}: {count} of {built} faults caught ({100 * count / max(built, 1):.0f} %)")
