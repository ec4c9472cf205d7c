"""Where faults are tried: copies of the tree that are built and tested, one for each core."""

import os
import shutil
import signal
import subprocess
import time
from pathlib import Path
from typing import List, Optional, Sequence, Tuple

ROOT = Path(__file__).resolve().parents[2]
FOLDER = ROOT / "build" / "mutate"
UNIT = ["unit_tests"]
ALL = ["unit_tests", "VornipcAdapter", "component_tests"]

# In this order until one fails: what notices most comes first, what takes seconds last. Tests of the simulated platform
# alone do not reach src/.
ELSEWHERE = "SimulatedPlatform*:ConstCharArrayBuffer*"
STORIES = "*Exchanges*"
SLOW = "*ManyLives*:*Storm*:*ARestartedRadio*:MisuseMatrix*"

# Seconds after which a test program hangs; without a fault each takes less than 10.
PATIENCE = 45


class BuildFailed(Exception):
    pass


def run(command: Sequence[str], cwd: Path, seconds: float, env: Optional[dict] = None) -> Tuple[int, str]:
    """Exit code and output; a command that takes too long is ended with all that it started."""
    with subprocess.Popen(
        command,
        cwd=cwd,
        env={**os.environ, **(env or {})},
        stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        text=True,
        errors="replace",
        start_new_session=True,
    ) as process:
        try:
            output, _ = process.communicate(timeout=seconds)
            return process.returncode, output
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            output, _ = process.communicate()
            return -signal.SIGKILL, output


def tracked_files() -> List[str]:
    listed = subprocess.run(
        ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
        cwd=ROOT,
        capture_output=True,
        check=True,
    ).stdout.decode()
    return [name for name in listed.split("\0") if name and (ROOT / name).is_file()]


class Bench:
    """One copy of the tree with its builds: plain, and under ThreadSanitizer for faults of locks. They lie in the copy as
    they do in any clone, so that the compiler cache has most of it already."""

    def __init__(self, number: int) -> None:
        self.tree = FOLDER / str(number)
        self.ready: set = set()

    def folder(self, preset: str) -> Path:
        return self.tree / "build" / preset

    def refresh(self) -> None:
        """Makes the copy what the tree is. Files that are the same keep their times, so that little is built anew."""
        wanted = set(tracked_files())
        for name in wanted:
            source, copy = ROOT / name, self.tree / name
            if not copy.is_file() or copy.read_bytes() != source.read_bytes():
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source, copy)
        for path in [p for p in self.tree.rglob("*") if p.is_file()]:
            name = str(path.relative_to(self.tree))
            if name not in wanted and not name.startswith("build/"):
                path.unlink()

    def build(self, preset: str, jobs: int, targets: Sequence[str]) -> None:
        if preset not in self.ready:
            code, output = run(["cmake", "--preset", preset], self.tree, 300)
            if code != 0:
                raise BuildFailed(output)
            self.ready.add(preset)
        code, output = run(
            ["cmake", "--build", str(self.folder(preset)), "-j", str(jobs), "--target", *targets], self.tree, 3000
        )
        if code != 0:
            raise BuildFailed(output)

    def failing_test(self, preset: str, jobs: int, seconds: float = PATIENCE) -> Optional[str]:
        """Builds and runs, program by program, until a test notices something; None when all pass."""
        tests = self.folder(preset) / "tests"
        unit = tests / "unit" / "unit_tests"
        component = tests / "component" / "component_tests"
        if preset == "tsan":
            rounds = [(UNIT, unit, "*Meeting*"), (ALL, component, "*Meeting*")]
        else:
            rounds = [
                (UNIT, unit, f"-{ELSEWHERE}"),
                (ALL, component, STORIES),
                (ALL, component, f"-{STORIES}:{SLOW}"),
                (ALL, component, SLOW),
            ]
        env = {"GTEST_FAIL_FAST": "1", "TSAN_OPTIONS": "halt_on_error=1"}
        for targets, program, chosen in rounds:
            self.build(preset, jobs, targets)
            code, output = run([str(program), f"--gtest_filter={chosen}"], program.parent, seconds, env)
            if code != 0:
                lines = output.splitlines()
                failed = [line for line in lines if line.startswith("[  FAILED  ] ")]
                started = [line for line in lines if line.startswith("[ RUN      ] ")]
                name = (failed[:1] or started[-1:] or [" " * 13 + program.name])[0][13:].split(",")[0].split(" (")[0]
                return name + (" (hangs)" if code == -signal.SIGKILL else "")
        return None

    def try_fault(self, file: str, faulty: str, presets: Sequence[str]) -> Tuple[Optional[str], float]:
        """@return which test noticed the fault, None for no test, and the seconds that it took. Raises BuildFailed
        when the compiler did."""
        path = self.tree / file
        whole = path.read_text()
        begin = time.monotonic()
        try:
            path.write_text(faulty)
            for preset in presets:
                noticed = self.failing_test(preset, 1)
                if noticed:
                    return noticed + (" under ThreadSanitizer" if preset == "tsan" else ""), time.monotonic() - begin
            return None, time.monotonic() - begin
        finally:
            path.write_text(whole)
