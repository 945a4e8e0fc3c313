#!/usr/bin/env python3
# Fault injection: applies each single fault of scripts/faults.txt to the
# product sources, rebuilds, runs the test suites and records which tests
# failed (caught it), then puts the original file back before the next one.
#
#   scripts/fault-check.py [--only ID,ID...] [--out results.tsv] [--win BUILD_DIR]
#                          [--native BUILD_DIR] [--exclude REGEX] [--jobs N] [--list]
#
# --list only prints the faults and checks that each one applies (no build).
# Results: one TSV line per fault, id, area, file, what, caught (yes, no or
# build-failed) and the failing tests; build and test output goes to
# <out folder>/fault-logs/<id>.log.
import argparse
import re
import signal
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
FAULTS = ROOT / "scripts" / "faults.txt"
FIELDS = ("id", "area", "file", "what", "find", "replace")


def read_faults():
    faults = []
    for block in re.split(r"^---$", FAULTS.read_text(), flags=re.M):
        fields = dict(re.findall(r"^(\w+):[ ]?(.*)$", block, flags=re.M))
        if not fields:
            continue
        missing = [name for name in FIELDS if name not in fields]
        if missing:
            sys.exit(f"{FAULTS}: block {fields.get('id', '?')} lacks {', '.join(missing)}")
        faults.append(fields)
    return faults


def occurrences(fault):
    return (ROOT / fault["file"]).read_text().count(fault["find"])


def interrupt(*_):
    raise KeyboardInterrupt


def run_logged(command, log):
    log.write(f"\n$ {' '.join(command)}\n")
    log.flush()
    result = subprocess.run(command, cwd=ROOT, stdout=subprocess.PIPE,
                            stderr=subprocess.STDOUT, text=True, errors="replace")
    log.write(result.stdout)
    return result


def failed_tests(result):
    """Names listed after ctest's "The following tests FAILED:" line."""
    lines = result.stdout.splitlines()
    if "The following tests FAILED:" not in lines:
        return [] if result.returncode == 0 else [f"ctest-exit-{result.returncode}"]
    names = []
    for line in lines[lines.index("The following tests FAILED:") + 1:]:
        if " - " not in line:
            break
        names.append(line.split(" - ", 1)[1].rsplit(" (", 1)[0])
    return names


def build(directories, log):
    return all(run_logged(["cmake", "--build", d, "-j2"], log).returncode == 0
               for d in directories)


def check_fault(fault, args, log):
    """Applies the fault, builds and tests; returns (caught, failing tests)."""
    path = ROOT / fault["file"]
    original = path.read_bytes()
    text = original.decode()
    if text.count(fault["find"]) != 1:
        raise SystemExit(f"{fault['id']}: find text no longer occurs exactly once")
    native = fault["file"].startswith("redeye/")
    try:
        path.write_bytes(text.replace(fault["find"], fault["replace"]).encode())
        if not build([args.win] + ([args.native] if native else []), log):
            return "build-failed", []
        failures = []
        if native:
            failures += failed_tests(run_logged(
                ["ctest", "--test-dir", args.native, "-j2", "--timeout", "120"], log))
        windows = ["bash", "scripts/with-display.sh", args.win, "ctest", "--test-dir", args.win,
                   "--timeout", "120"]
        selection = ["-E", args.exclude] if args.exclude else []
        failed = failed_tests(run_logged(windows + ["-j", str(args.jobs)] + selection, log))
        if failed and args.jobs > 1:
            # GUI tests side by side share one desktop and can fail for that
            # alone: only a failure that comes again when run alone counts.
            alone = "^(" + "|".join(re.escape(name) for name in failed) + ")$"
            failed = failed_tests(run_logged(windows + ["-R", alone], log))
        failures += failed
        return ("yes" if failures else "no"), failures
    finally:
        path.write_bytes(original)


def main():
    parser = argparse.ArgumentParser(description="Run the fault injection study.")
    parser.add_argument("--only", help="comma-separated fault ids")
    parser.add_argument("--out", default="build/fault-results.tsv")
    parser.add_argument("--win", default="build/win64")
    parser.add_argument("--native", default="build/native")
    parser.add_argument("--exclude", help="ctest -E regex for the Windows suite")
    parser.add_argument("--jobs", type=int, default=1, help="Windows tests run side by side")
    parser.add_argument("--list", action="store_true", help="list and check the faults only")
    args = parser.parse_args()

    faults = read_faults()
    if args.only:
        wanted = args.only.split(",")
        unknown = set(wanted) - {f["id"] for f in faults}
        if unknown:
            sys.exit(f"unknown fault ids: {', '.join(sorted(unknown))}")
        faults = [f for f in faults if f["id"] in wanted]
    counts = {f["id"]: occurrences(f) for f in faults}
    bad = [name for name, count in counts.items() if count != 1]
    if args.list:
        for f in faults:
            print(f"{f['id']}\t{f['area']}\t{f['file']}\t{f['what']}\t{counts[f['id']]} match")
        print(f"{len(faults)} faults, {len(bad)} not applying exactly once: {' '.join(bad)}")
        sys.exit(1 if bad else 0)
    if bad:
        sys.exit(f"find text not exactly once in its file: {' '.join(bad)}")

    files = sorted({f["file"] for f in faults})
    status = subprocess.run(["git", "status", "--porcelain", "--"] + files, cwd=ROOT,
                            stdout=subprocess.PIPE, text=True, check=True).stdout
    modified = [line for line in status.splitlines() if not line.startswith("??")]
    if modified:
        sys.exit("refusing to run, fault files have local changes:\n" + "\n".join(modified))

    signal.signal(signal.SIGTERM, interrupt)  # a kill restores the file like Ctrl-C
    out = ROOT / args.out
    logs = out.parent / "fault-logs"
    logs.mkdir(parents=True, exist_ok=True)
    try:
        for number, fault in enumerate(faults, 1):
            with open(logs / f"{fault['id']}.log", "w") as log:
                caught, failures = check_fault(fault, args, log)
            row = [fault[k] for k in FIELDS[:4]] + [caught, ",".join(failures)]
            with open(out, "a") as table:
                table.write("\t".join(row) + "\n")
            print(f"[{number}/{len(faults)}] {fault['id']} {caught} {' '.join(failures)}",
                  flush=True)
    except KeyboardInterrupt:
        sys.exit("interrupted: the faulted file was restored; rebuild before using the builds")
    with open(logs / "final-rebuild.log", "w") as log:
        native = any(f["file"].startswith("redeye/") for f in faults)
        if not build([args.win] + ([args.native] if native else []), log):
            sys.exit(f"final rebuild of the original sources failed, see {log.name}")
    print(f"results in {out}")


if __name__ == "__main__":
    main()
