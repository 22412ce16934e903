"""Runs a GoogleTest program to its last case, also through crashes.

The cases are counted as they are reported. When the program ends in the middle of a case, that case has failed
and the program is started again without the cases that had their turn.
"""
import os
import re

import process

CRASHES_TOLERATED = 20
START = re.compile(r"\[ RUN      \] (\S+)$")
END = re.compile(r"\[ +(OK|FAILED|SKIPPED) +\] ([^\s,]+).*\(\d+ ms\)$")
FINISHED = re.compile(r"\[==========\] \d+ tests? from \d+ test (?:suites?|cases?) ran\.")


class GtestProgram:
    """command: the program with its wrapper; flag_file: a scratch file for the filter, and the path by which the
    program itself finds it is the same."""

    def __init__(self, command, flag_file, env, cwd):
        self.command, self.flag_file, self.env, self.cwd = command, flag_file, env, cwd
        self.silence = 120  # seconds without output until the running case counts as hanging
        self.passed, self.failures, self.skipped = 0, [], []
        self.log = []
        self._done = []

    def run(self, after_crash=lambda: None):
        """Fills passed, failures as (name, text) and skipped as (name, text). after_crash is called before each new
        start."""
        for _ in range(CRASHES_TOLERATED):
            crashed_in, status = self._run_once()
            if crashed_in is None:
                break
            self.failures.append((crashed_in, process.excerpt(self._output, status)))
            self._done.append(crashed_in)
            after_crash()
        else:
            self.failures.append(("(program)", f"given up after {CRASHES_TOLERATED} crashes"))
        if not self._done and not self.failures:
            self.failures.append(("(program)", "\n".join([process.excerpt(self._output), "ran no test"])))

    def _run_once(self):
        """Answers (case it crashed in or None, exit status)."""
        self._running, self._finished, self._output = None, False, []
        failures_before = len(self.failures)
        with open(self.flag_file, "w", encoding="utf-8") as file:
            file.write("--gtest_color=no\n")
            if self._done:
                file.write("--gtest_filter=-" + ":".join(self._done) + "\n")
        status = process.run(self.command + ["--gtest_flagfile=" + os.path.abspath(self.flag_file)], self._line,
                             env=self.env, cwd=self.cwd, silence=self.silence)
        if self._running:
            return self._running, status
        failed_cases = len(self.failures) > failures_before
        # A leak report or a crash at exit comes after the last case; a missing end line is an early exit.
        if not self._finished or status not in (0, 1) or (status == 1 and not failed_cases):
            early = "" if self._finished else " before the end of the tests"
            self.failures.append(("(program)", process.excerpt(self._output, status) + early))
        return None, status

    def _line(self, line):
        self.log.append(line)
        start, end = START.search(line), END.search(line)
        if start:
            self._running, self._output = start[1], []
        elif end and end[2] == self._running:
            self._case_ended(end[1], end[2])
        elif FINISHED.search(line):
            self._finished = True
        else:
            self._output.append(line)

    def _case_ended(self, result, name):
        text = process.excerpt(self._output)
        self._done.append(name)
        self._running, self._output = None, []
        if result == "OK":
            self.passed += 1
        elif result == "SKIPPED":
            self.skipped.append((name, text))
        else:
            self.failures.append((name, text))
