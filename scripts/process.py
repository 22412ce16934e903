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
    start = heard = time.monotonic()
    rest = b""
    with process.stdout as stream, selectors.DefaultSelector() as selector:
        selector.register(stream, selectors.EVENT_READ)
        while True:
            # Helpers that outlive the program (Wine's services) can hold the pipe open, so its end is not awaited.
            ended = process.poll() is not None
            if selector.select(0 if ended else 0.1):
                chunk = os.read(stream.fileno(), 1 << 16)
                if not chunk:
                    break
                *lines, rest = (rest + chunk).split(b"\n")
                for line in lines:
                    on_line(_text(line))
                heard = time.monotonic()
            elif ended:
                break
            now = time.monotonic()
            if now - heard > silence or now - start > total:
                return _kill(process)
    if rest:
        on_line(_text(rest))
    try:
        return process.wait(silence)
    except subprocess.TimeoutExpired:
        return _kill(process)


def _kill(process):
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


def excerpt(lines, status=None):
    """The beginning and the end of an output (a crash report says most at its beginning), then the exit status."""
    if len(lines) > 70:
        lines = lines[:45] + [f"... ({len(lines) - 65} lines)"] + lines[-20:]
    return "\n".join(lines + ([] if status is None else [describe(status)]))
