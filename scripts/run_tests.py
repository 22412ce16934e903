#!/usr/bin/env python3
"""Runs every ring of tests: run_tests.py [WORD...]

Tests have names such as native/imaging, win32/controls, script32/us_check_box.vbs, corpus/png, system/dump.sh,
source/format; with words only those are run whose name contains one of them. Programs come from build/, which
`make` fills. The last line says `N passed, N failed`; the exit status is 0 only when something ran and nothing
failed. The whole output of each test is kept in build/test-logs/.
"""
import concurrent.futures
import fcntl
import os
import pathlib
import shutil
import subprocess
import sys
import threading
import time

import process
from gtest_program import GtestProgram

SCRIPTS = pathlib.Path(__file__).resolve().parent
ROOT = SCRIPTS.parent
BUILD = pathlib.Path(os.environ.get("KESTRELON_BUILD", ROOT / "build")).resolve()
LOGS = BUILD / "test-logs"
JOBS = int(os.environ.get("JOBS", "2"))
NOT_APPLICABLE = 77  # exit status of a test that says in its last line why it does not apply here


class Result:
    """What a test answers: counts, and (name, text) of everything to be told."""

    def __init__(self, passed=0, failures=(), skipped=()):
        self.passed, self.failures, self.skipped = passed, list(failures), list(skipped)


class Test:
    """name; lane: tests of one lane run one after the other (None: freely); run(): answers a Result."""

    def __init__(self, name, lane, run):
        self.name, self.lane, self.run = name, lane, run


class Prefix:
    """The Wine prefix of one word size for the length of the run, with the library registered in it."""

    def __init__(self, bits):
        self.bits = bits
        self.wrapper = str(SCRIPTS / f"wine{bits}")
        self.library = BUILD / f"win{bits}" / "kestrelon2012.ocx"
        self._keeper = None

    def keep_alive(self):
        """Starting the first process of a prefix takes seconds, so one that waits for input stays."""
        self.release()
        self._keeper = subprocess.Popen([self.wrapper, "cmd"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=subprocess.DEVNULL, start_new_session=True)
        if not self._keeper.stdout.read(1):  # its prompt: from here on the prefix is up
            raise RuntimeError(f"{self.bits}-bit Wine does not start")

    def release(self):
        """Ends everything that runs in the prefix."""
        if self._keeper is None:
            return
        self._keeper.stdin.close()
        subprocess.run([self.wrapper, "-k"], env=dict(os.environ, KESTRELON_WINE="server"), check=False,
                       stderr=subprocess.DEVNULL)
        self._keeper.wait()
        self._keeper = None

    def register(self):
        return run_plain([self.wrapper, "regsvr32", "/s", str(self.library)], f"register{self.bits}")


def environment():
    return dict(os.environ, KESTRELON_ROOT=str(ROOT), KESTRELON_BUILD=str(BUILD),
                ASAN_OPTIONS="detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1",
                UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1")


def log_path(name):
    return LOGS / (name.replace("/", "_") + ".log")


def run_plain(command, name, accept=lambda status, lines: status == 0, **limits):
    """One test that passes or fails as a whole."""
    lines = []
    status = process.run(command, lines.append, env=environment(), cwd=ROOT, **limits)
    log_path(name).write_text("\n".join(lines) + "\n", encoding="utf-8")
    if status == NOT_APPLICABLE and any(line.strip() for line in lines):
        return Result(skipped=[("", lines[-1])])
    if accept(status, lines):
        return Result(passed=1)
    return Result(failures=[("", process.excerpt(lines, status))])


def run_gtest(program, name, prefix=None):
    command = [prefix.wrapper] if prefix else []
    flags = LOGS / (name.replace("/", "_") + ".flags")
    run = GtestProgram(command + [str(program)], flags, environment(), ROOT)
    # What a crashed program leaves behind in a prefix (windows, a stuck server) must not reach the next case.
    run.run(after_crash=prefix.keep_alive if prefix else lambda: None)
    log_path(name).write_text("\n".join(run.log) + "\n", encoding="utf-8")
    return Result(run.passed, run.failures, run.skipped)


def script_said_ok(status, lines):
    """An unhandled script error exits with 0, so a script states its success in its last line."""
    said = [line.strip() for line in lines if line.strip()]
    return status == 0 and bool(said) and said[-1] == "OK"


def discover(prefixes):
    """All tests, those of long duration first."""
    tests = []

    def add(name, lane, run, *arguments, **options):
        tests.append(Test(name, lane, lambda: run(*arguments, **options)))

    for bits, prefix in prefixes.items():
        lane = f"win{bits}"
        programs = sorted((BUILD / lane / "tests").glob("*_tests.exe"))
        scripts = sorted(path for kind in ("*.vbs", "*.js") for path in (ROOT / "tests/scripts").glob(kind))
        if prefix.library.exists() or scripts:
            add(f"{lane}/register", lane, prefix.register)
        for path in programs:
            name = f"{lane}/{path.stem.removesuffix('_tests')}"
            add(name, lane, run_gtest, path, name, prefix)
        for path in scripts:
            name = f"script{bits}/{path.name}"
            add(name, lane, run_plain, [prefix.wrapper, "cscript", "//nologo", str(path)], name, script_said_ok)
    for path in sorted(path for kind in ("*.sh", "*.py") for path in (ROOT / "tests/system").glob(kind)):
        shell = "bash" if path.suffix == ".sh" else sys.executable
        name = f"system/{path.name}"
        add(name, "system", run_plain, [shell, str(path)], name, silence=300)
    for path in sorted((BUILD / "native/tests").glob("*_tests")):
        name = f"native/{path.stem.removesuffix('_tests')}"
        add(name, None, run_gtest, path, name)
    for source in sorted((ROOT / "fuzz").glob("*_fuzz.cpp")):
        name = f"corpus/{source.stem.removesuffix('_fuzz')}"
        add(name, None, run_plain, [str(BUILD / "native/fuzz-replay" / name.split("/")[1])], name)
    for name, command in (("source/format", ["layout.py", "--check"]), ("source/tidy", ["tidy.py"])):
        add(name, None, run_plain, [sys.executable, str(SCRIPTS / command[0]), *command[1:]], name, silence=600, total=3600)
    return tests


class Runner:
    """JOBS workers; each takes the first waiting test whose lane is free."""

    def __init__(self, tests):
        self.waiting = list(tests)
        self.results = {}
        self._busy = set()
        self._changed = threading.Condition()

    def run(self):
        with concurrent.futures.ThreadPoolExecutor(JOBS) as pool:
            for worker in [pool.submit(self._work) for _ in range(JOBS)]:
                worker.result()

    def _take(self):
        with self._changed:
            while self.waiting:
                for test in self.waiting:
                    if test.lane is None or test.lane not in self._busy:
                        self.waiting.remove(test)
                        self._busy.add(test.lane)
                        return test
                self._changed.wait()
            return None

    def _work(self):
        while test := self._take():
            start = time.monotonic()
            try:
                result = test.run()
            except Exception as error:  # a fault of the runner is a failed test, not a silent one
                result = Result(failures=[("", f"{type(error).__name__}: {error}")])
            seconds = time.monotonic() - start
            with self._changed:
                self._busy.discard(test.lane)
                self.results[test.name] = result
                self._changed.notify_all()
                word = "FAILED" if result.failures else "ok"
                print(f"{word:6} {test.name:36} {result.passed:6} passed {len(result.failures):4} failed {seconds:7.1f} s",
                      flush=True)


def tell(results):
    """Prints what did not pass, then the count; answers the exit status."""
    for word, kind in (("not applicable", "skipped"), ("FAILED", "failures")):
        for test, result in sorted(results.items()):
            for case, text in getattr(result, kind):
                print(f"\n{word}: {test} {case}".rstrip())
                print("  " + text.replace("\n", "\n  "))
    passed = sum(result.passed for result in results.values())
    failed = sum(len(result.failures) for result in results.values())
    print(f"\n{passed} passed, {failed} failed", flush=True)
    return 1 if failed or not passed else 0


def main(words):
    BUILD.mkdir(exist_ok=True)
    with open(BUILD / "test.lock", "w", encoding="utf-8") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)  # two runs would share prefixes and logs
        shutil.rmtree(LOGS, ignore_errors=True)
        LOGS.mkdir(parents=True)
        os.nice(5)
        prefixes = {bits: Prefix(bits) for bits in (32, 64)}
        tests = [test for test in discover(prefixes) if not words or any(word in test.name for word in words)]
        used = [prefix for bits, prefix in prefixes.items() if any(test.lane == f"win{bits}" for test in tests)]
        runner = Runner(tests)
        try:
            for prefix in used:
                prefix.keep_alive()
            runner.run()
        finally:
            for prefix in used:
                prefix.release()
        return tell(runner.results)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
