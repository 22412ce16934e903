"""Runs a program with limits on silence and on total time."""
import os
import selectors
import signal
import subprocess
import time

STATUS_TIME_LIMIT = "time limit"


def run(command, on_line, env=None, cwd=None, silence=120, total=900):
    """Runs `command`, calls on_line(text) for every line of output (both streams), answers the exit status.

    `silence` and `total` are seconds; a program that says nothing for `silence` or lasts longer than `total` is
    killed with its process group and STATUS_TIME_LIMIT is answered. A signal answers as a negative number.
    """
    process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                               env=env, cwd=cwd, start_new_session=True)
    end = time.monotonic() + total
    rest = b""
    with process.stdout as stream, selectors.DefaultSelector() as selector:
        selector.register(stream, selectors.EVENT_READ)
        while True:
            limit = min(silence, end - time.monotonic())
            if limit <= 0 or not selector.select(limit):
                os.killpg(process.pid, signal.SIGKILL)
                process.wait()
                return STATUS_TIME_LIMIT
            chunk = os.read(stream.fileno(), 1 << 16)
            if not chunk:
                break
            *lines, rest = (rest + chunk).split(b"\n")
            for line in lines:
                on_line(_text(line))
    if rest:
        on_line(_text(rest))
    return _wait(process, max(1, end - time.monotonic()))


def _wait(process, seconds):
    try:
        return process.wait(seconds)
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)
        process.wait()
        return STATUS_TIME_LIMIT


def _text(line):
    return line.decode("utf-8", "replace").rstrip("\r")


def describe(status):
    """An exit status in words."""
    if status == STATUS_TIME_LIMIT:
        return "stopped at the time limit"
    if status < 0:
        return "killed by " + signal.Signals(-status).name
    return f"exit status {status}"
