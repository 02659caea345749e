#!/usr/bin/env python3
"""Query throughput of the Python module on the dictionary of a system file: the Python side of
run.sh, asking what bench_query_road asks from C++. Reports queries per CPU second.

    bench_query.py FILE.sav VARIABLES [SECONDS]
"""

import random
import sys
import time

import transspace


def main(path, variables, seconds=2.0):
    dictionary = transspace.read_dictionary(path)
    dictionary.query_string("/dictionary", "@rowCount")  # builds the query view, outside the timing
    pick = random.Random(12345)
    # CPU time, as Google Benchmark counts the C++ side: on a busy machine wall time would charge
    # either side for the other processes.
    queries = 0
    start = time.process_time()
    deadline = start + seconds
    while True:
        for _ in range(1000):
            k = pick.randrange(variables)
            label = dictionary.query_string("/dictionary", f"variable[@name='variable_{k}']/@label")
            if label != f"Label of variable number {k}":
                raise SystemExit(f"wrong answer for variable_{k}: {label!r}")
        queries += 1000
        now = time.process_time()
        if now >= deadline:
            break
    print(f"python_queries_per_s {queries / (now - start):.0f}")


if __name__ == "__main__":
    main(sys.argv[1], int(sys.argv[2]), *(float(a) for a in sys.argv[3:]))
