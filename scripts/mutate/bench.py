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
TARGETS = ["VornipcAdapter", "unit_tests", "component_tests"]

# In this order until one fails: what notices most comes first, what takes seconds last. Tests of the simulated platform
# alone do not reach src/.
ELSEWHERE = "SimulatedPlatform*:ConstCharArrayBuffer*"
STORIES = "*Exchanges*"
SLOW = "*ManyLives*:*Storm*:*ARestartedRadio*:MisuseMatrix*"

# Seconds after which a test program hangs; without a fault each takes less than 10.
PATIENCE = 60


class BuildFailed(Exception):
    pass


def run(command: Sequence[str], cwd: Path, seconds: float, env: Optional[dict] = None) -> Tuple[int, str]:
    """Exit code and output; a command that takes too long is ended with all that it started."""
    with subprocess.Popen(command, cwd=cwd, env={**os.environ, **(env or {})}, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace",
                          start_new_session=True) as process:
        try:
            output, _ = process.communicate(timeout=seconds)
            return process.returncode, output
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            output, _ = process.communicate()
            return -signal.SIGKILL, output


def tracked_files() -> List[str]:
    listed = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"], cwd=ROOT,
                            capture_output=True, check=True).stdout.decode()
    return [name for name in listed.split("\0") if name and (ROOT / name).is_file()]


class Bench:
    """One copy of the tree with its builds: plain, and under ThreadSanitizer for faults of locks."""

    def __init__(self, number: int) -> None:
        self.tree = FOLDER / f"tree{number}"
        self.builds = {"clang": FOLDER / f"clang{number}", "tsan": FOLDER / f"tsan{number}"}
        self._ready: set = set()

    def refresh(self) -> None:
        """Makes the copy what the tree is. Files that are the same keep their times, so that little is built anew."""
        wanted = set(tracked_files())
        for name in wanted:
            source, copy = ROOT / name, self.tree / name
            if not copy.is_file() or copy.read_bytes() != source.read_bytes():
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source, copy)
        for path in [p for p in self.tree.rglob("*") if p.is_file()]:
            if str(path.relative_to(self.tree)) not in wanted:
                path.unlink()

    def build(self, preset: str, jobs: int) -> None:
        folder = self.builds[preset]
        if preset not in self._ready:
            code, output = run(["cmake", "--preset", preset, "-B", str(folder), f"-DVORNIPC_BIN_DIR={folder}/bin"],
                               self.tree, 300)
            if code != 0:
                raise BuildFailed(output)
            self._ready.add(preset)
        code, output = run(["cmake", "--build", str(folder), "-j", str(jobs), "--target", *TARGETS], self.tree, 3000)
        if code != 0:
            raise BuildFailed(output)

    def failing_test(self, preset: str, seconds: float = PATIENCE) -> Optional[str]:
        """The first test that notices something; None when all pass."""
        tests = self.builds[preset] / "tests"
        programs = [tests / "unit" / "unit_tests", tests / "component" / "component_tests"]
        if preset == "tsan":
            rounds = [(program, "*Meeting*") for program in programs]
        else:
            unit, component = programs
            rounds = [(unit, f"-{ELSEWHERE}"), (component, STORIES), (component, f"-{STORIES}:{SLOW}"),
                      (component, SLOW)]
        env = {"GTEST_FAIL_FAST": "1", "GTEST_BRIEF": "0", "TSAN_OPTIONS": "halt_on_error=1"}
        for program, tests_of_round in rounds:
            code, output = run([str(program), f"--gtest_filter={tests_of_round}"], program.parent, seconds, env)
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
                self.build(preset, 1)
                noticed = self.failing_test(preset)
                if noticed:
                    return noticed + (" under ThreadSanitizer" if preset == "tsan" else ""), time.monotonic() - begin
            return None, time.monotonic() - begin
        finally:
            path.write_text(whole)
