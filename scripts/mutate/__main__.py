#!/usr/bin/env python3
"""Puts one small fault at a time into src/, runs the tests, and tells which faults nobody noticed."""

import argparse
import random
import sys
import threading
import time
from collections import defaultdict
from pathlib import Path
from typing import Dict, List

sys.path.insert(0, str(Path(__file__).resolve().parent))

from bench import ALL, FOLDER, ROOT, Bench, BuildFailed  # noqa: E402
from faults import KINDS, Fault, faults_in  # noqa: E402

NO_DIFFERENCE = Path(__file__).resolve().parent / "no-difference.txt"


def all_faults() -> List[Fault]:
    files = sorted(path for ending in ("h", "cpp") for path in (ROOT / "src").rglob(f"*.{ending}"))
    return [fault for path in files for fault in faults_in(str(path.relative_to(ROOT)), path.read_text())]


def without_difference(faults: List[Fault]) -> Dict[str, str]:
    """The names of faults that make no difference from outside, and why they make none."""
    reasons = {}
    for line in NO_DIFFERENCE.read_text().splitlines():
        if line and not line.startswith("#"):
            name, reason = line.split(None, 1)
            reasons[name] = reason
    for fault in faults:
        everywhere = f"{fault.kind.replace(' ', '-')}@{Path(fault.file).name}"
        if everywhere in reasons:
            reasons[fault.ident] = reasons[everywhere]
    return reasons


def in_turn(faults: List[Fault], seed: int) -> List[Fault]:
    """All faults by chance, one of each kind in turn, so that every beginning has all kinds alike."""
    chance = random.Random(seed)
    queues = []
    for kind, _ in KINDS:
        queue = [fault for fault in faults if fault.kind == kind]
        chance.shuffle(queue)
        queues.append(queue)
    order = []
    while any(queues):
        order += [queue.pop() for queue in queues if queue]
    return order


class Trial:
    """Works through the faults on several benches until enough of them have been tried. A fault that does not build, or
    that is known to make no difference, is replaced by the next one."""

    def __init__(self, faults: List[Fault], wanted: int, seconds: float) -> None:
        self.faults, self.wanted = faults, wanted
        self.end = time.monotonic() + seconds
        self.lock = threading.Lock()
        self.taken = self.pending = self.not_built = 0
        self.results: List[tuple] = []
        self.known = without_difference(faults)
        self.no_difference: List[Fault] = []
        self.error = ""

    def next(self):
        with self.lock:
            while self.taken < len(self.faults) and not self.error:
                if len(self.results) + self.pending >= self.wanted or time.monotonic() > self.end:
                    return None
                fault = self.faults[self.taken]
                self.taken += 1
                if fault.ident in self.known:
                    self.no_difference.append(fault)
                else:
                    self.pending += 1
                    return fault
            return None

    def work(self, bench: Bench) -> None:
        while fault := self.next():
            presets = ["clang", "tsan"] if fault.kind == "lock" else ["clang"]
            try:
                whole = (bench.tree / fault.file).read_text()
                noticed, seconds = bench.try_fault(fault.file, fault.apply(whole), presets)
                with self.lock:
                    self.results.append((fault, noticed, seconds))
                    verdict = f"noticed by {noticed}" if noticed else "NOT NOTICED"
                    print(
                        f"{len(self.results):4} {fault.kind:15} {fault.ident} {seconds:5.1f} s  {fault.describe()}\n"
                        f"{'':22}{verdict}",
                        flush=True,
                    )
            except BuildFailed:
                with self.lock:
                    self.not_built += 1
            except Exception as error:  # pylint: disable=broad-except
                self.error = str(error)
                raise
            finally:
                with self.lock:
                    self.pending -= 1


def report(trial: Trial, seconds: float) -> None:
    tried: Dict[str, List[bool]] = defaultdict(list)
    for fault, noticed, _ in trial.results:
        tried[fault.kind].append(noticed is not None)
    print("\nkind             tried  noticed")
    for kind, _ in KINDS:
        if tried[kind]:
            print(f"{kind:15} {len(tried[kind]):6}  {sum(tried[kind]):7}")
    every = [hit for hits in tried.values() for hit in hits]
    share = 100 * sum(every) / max(1, len(every))
    print(f"{'all':15} {len(every):6}  {sum(every):7}   {share:.0f} %")
    print(
        f"\n{seconds / max(1, len(every)):.1f} s a fault; {trial.not_built} more did not build, "
        f"{len(trial.no_difference)} more make no difference from outside"
    )
    for fault in trial.no_difference:
        print(f"  {fault.ident} {fault.describe()}\n           {trial.known[fault.ident]}")
    missed = [fault for fault, noticed, _ in trial.results if noticed is None]
    if missed:
        print("\nNobody noticed:")
        for fault in missed:
            print(f"  {fault.ident} {fault.kind}: {fault.describe()}")


def main() -> int:
    parser = argparse.ArgumentParser(prog="mutate", description=__doc__)
    parser.add_argument("-n", type=int, default=0, help="how many faults, all kinds alike; default: all there are")
    parser.add_argument("--seed", type=int, default=1, help="another number, another sample")
    parser.add_argument("--kind", action="append", choices=[kind for kind, _ in KINDS], help="only this kind")
    parser.add_argument("--file", help="only files whose path has this in it")
    parser.add_argument("--only", action="append", metavar="NAME", help="only the fault of this name (eight digits)")
    parser.add_argument("--seconds", type=float, default=1e9, help="begin no further fault this long after the first")
    parser.add_argument(
        "--least",
        type=float,
        default=0,
        metavar="PERCENT",
        help="fail when more of those asked for go unnoticed than this share leaves room for",
    )
    parser.add_argument("--benches", type=int, default=2, help="how many are tried at a time")
    parser.add_argument("--list", action="store_true", help="print the faults and try none")
    options = parser.parse_args()

    faults = [
        fault
        for fault in all_faults()
        if (not options.kind or fault.kind in options.kind)
        and (options.file or "") in fault.file
        and (not options.only or fault.ident in options.only)
    ]
    faults = in_turn(faults, options.seed)
    if not faults:
        parser.error("there is no such fault; --list shows all")
    if options.list:
        for fault in faults[: options.n or None]:
            print(f"{fault.ident} {fault.kind}: {fault.describe()}")
        return 0

    begin = time.monotonic()
    FOLDER.mkdir(parents=True, exist_ok=True)
    benches = [Bench(number) for number in range(options.benches)]
    trial = Trial(faults, options.n or len(faults), options.seconds)
    first = faults[: 2 * trial.wanted]
    for bench in benches:
        bench.refresh()
        for preset in ["clang", "tsan"] if any(fault.kind == "lock" for fault in first) else ["clang"]:
            try:
                bench.build(preset, options.benches, ALL)
            except BuildFailed as error:
                print(f"mutate: the tree does not build as it is:\n{error}", file=sys.stderr)
                return 1
    for preset in sorted(benches[0].ready):
        if broken := benches[0].failing_test(preset, options.benches, 300):
            print(f"mutate: without any fault, {broken} fails already ({preset})", file=sys.stderr)
            return 1
    print(f"built and green after {time.monotonic() - begin:.0f} s; seed {options.seed}", flush=True)
    begin = time.monotonic()
    trial.end = begin + options.seconds
    threads = [threading.Thread(target=trial.work, args=(bench,)) for bench in benches]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    report(trial, time.monotonic() - begin)
    if trial.error:
        print(f"mutate: {trial.error}", file=sys.stderr)
        return 1
    missed = sum(noticed is None for _, noticed, _ in trial.results)
    if not trial.results or 100 * missed > (100 - options.least) * trial.wanted:
        print(
            f"mutate: {missed} of {len(trial.results)} not noticed, {options.least:.0f} % are wanted", file=sys.stderr
        )
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
