#!/usr/bin/env python3
"""Plants known faults in the library one at a time and tells which ones the test suite catches.

Each fault below replaces one exact piece of a library source (it must occur exactly once). For
every fault the script applies it, rebuilds the suite in build/faults (Debug, no optimisation, no
examples: the quickest build to run the suite against), runs it, and puts the file back. A fault
is caught when the build or any test fails (a test that runs past the time limit fails too).

    scripts/faults.py                  every fault; the report goes to stdout and scripts/faults.txt
    scripts/faults.py NAME...          only the named faults (the report file is left alone)
    scripts/faults.py --list           the faults' names

The last full report is kept in scripts/faults.txt; comparing it with a new run shows whether a
change to the suite lost a fault it used to catch.
"""

import os
import subprocess
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.path.join(ROOT, "build", "faults")
REPORT = os.path.join(ROOT, "scripts", "faults.txt")
# The install, package, debugger and export checks build or inspect the library as a whole and
# take long; the faults below are all about behaviour, which the suite's own tests see.
EXCLUDED = "InstallAndConsume|SubdirectoryConsumer|DebuggerViews|ExportedSymbols|FacesDemo|TourDemo"

# (name, file, text, replacement)
FAULTS = [
    ("array-delete-cursor", "zt/containers/dyn_array.h",
     "  this->m_cur = at - 1;\n}", "  this->m_cur = at;\n}"),
    ("array-find-clamp", "zt/containers/array.h",
     "to >= m_count ? m_count - 1 : to;", "to >= m_count ? m_count - 2 : to;"),
    ("owning-list-no-delete", "zt/containers/internal/owning_list.h",
     "delete this->GetCurData();", "(void)this->GetCurData();"),
    ("owning-array-shrink-no-delete", "zt/containers/dyn_parray.h",
     "  } else if (n < old) {\n    for (ZtLong i = n; i < old; ++i) {\n      delete this->m_data[i];\n"
     "      this->m_data[i] = nullptr;\n    }\n    Base::SetLength(n, true);",
     "  } else if (n < old) {\n    Base::SetLength(n, true);"),
    ("stream-byte-order", "zt/platform/byte_order.h",
     "out[i] = static_cast<unsigned char>(bits >> (8 * i));",
     "out[sizeof(T) - 1 - i] = static_cast<unsigned char>(bits >> (8 * i));"),
    ("string-no-terminator", "zt/text/internal/string_body.inc",
     "  if (n < 0 || n >= m_count) return;\n  m_data[n] = 0;\n",
     "  if (n < 0 || n >= m_count) return;\n"),
    ("ga-skipped-step", "zt/ga/population.cpp",
     "uniform->Multiply(*self, *this);\n      Step();", "uniform->Multiply(*self, *this);"),
    ("events-posted-newest-first", "zt/events/events.cpp",
     "m_queue.push_back(event);", "m_queue.push_front(event);"),
    ("tasks-clear-no-delete", "zt/tasks/tasks.cpp",
     "    tasks[i] = nullptr;\n    delete task;\n", "    tasks[i] = nullptr;\n"),
    ("rtclass-ignores-bases", "zt/rtclass/run_time_class.cpp",
     "if (IsKindOf(*base, matches)) return true;", "static_cast<void>(base);"),
    ("binary-search-skips", "zt/containers/internal/element_ops.h",
     "      from = mid + 1;", "      from = mid + 2;"),
    ("rank-sort-unstable", "zt/containers/internal/sort.h",
     "      if (after(data[i], data[j])) {", "      if (!after(data[j], data[i])) {"),
    ("bits-unit-shift", "zt/bits/bit_array.h",
     "return (static_cast<unsigned char>(m_data[byte]) >> bit) & UnitMask();",
     "return (static_cast<unsigned char>(m_data[byte]) >> (bit + 1)) & UnitMask();"),
    ("label-numbers-as-text", "zt/text/label.cpp",
     "return x.Number() < y.Number() ? -1 : (x.Number() > y.Number() ? 1 : 0);",
     "return x.Number() > y.Number() ? -1 : (x.Number() < y.Number() ? 1 : 0);"),
    ("graph-mesh-wrong-turn", "zt/graph/graph_path.cpp",
     "a = n != nullptr ? n->FindNextArc(a) : nullptr;",
     "a = n != nullptr ? n->FindPreArc(a) : nullptr;"),
    ("utf8-no-overlong-check", "zt/platform/text.cpp",
     "if (lead == 0xE0) lo = 0xA0;", "static_cast<void>(lo);"),
    ("format-one-digit-exponent", "zt/platform/format.cpp",
     "std::to_chars(s + n, s + n + 8, exponent < 0 ? -exponent : exponent);",
     "std::to_chars(s + n, s + n + 8, (exponent < 0 ? -exponent : exponent) + 1);"),
    ("list-insert-head-cursor", "zt/containers/list.h",
     "PositionAndInsert([this] { MoveTo(-1); }, v);",
     "PositionAndInsert([this] { MoveTo(0); }, v);"),
    ("block-stream-unit-offset", "zt/streams/dyn_array_stream_ex.cpp",
     "  ZtLong offset = m_cur % m_unitSize;", "  ZtLong offset = m_cur % m_unitSize + (u > 0);"),
    ("dlist-pre-cursor", "zt/containers/dlist.h",
     "m_cur = m_curNode == m_tail ? m_length - 1 : m_cur - 1;",
     "m_cur = m_curNode == m_tail ? m_length - 1 : m_cur;"),
]


def run(cmd, **kw):
    return subprocess.run(cmd, cwd=ROOT, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **kw)


def configure():
    subprocess.run(["cmake", "-S", ".", "-B", BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
                    "-DCMAKE_CXX_FLAGS=-O0 -g0", "-DZT_BUILD_EXAMPLES=OFF",
                    "-DZT_TEST_SUBDIRECTORY=OFF"],
                   cwd=ROOT, check=True, stdout=subprocess.DEVNULL)


def suite_fails():
    """True when the build or a test fails."""
    if run(["cmake", "--build", BUILD, "-j2"]).returncode != 0:
        return "build"
    tests = run(["ctest", "--test-dir", BUILD, "-j2", "--timeout", "120", "-E", EXCLUDED])
    return "test" if tests.returncode != 0 else ""


def plant(fault):
    name, rel, text, replacement = fault
    path = os.path.join(ROOT, rel)
    with open(path, encoding="utf-8") as f:
        original = f.read()
    if original.count(text) != 1:
        raise SystemExit(f"{name}: the text to replace occurs {original.count(text)} times in {rel}")
    with open(path, "w", encoding="utf-8") as f:
        f.write(original.replace(text, replacement))
    return path, original


def main(argv):
    if argv[:1] == ["--list"]:
        print("\n".join(f[0] for f in FAULTS))
        return 0
    chosen = [f for f in FAULTS if not argv or f[0] in argv]
    unknown = set(argv) - {f[0] for f in FAULTS}
    if unknown:
        raise SystemExit("unknown faults: " + " ".join(sorted(unknown)))
    configure()
    if suite_fails():
        raise SystemExit("the suite fails without a planted fault: nothing to measure")
    lines = []
    for fault in chosen:
        start = time.time()
        path, original = plant(fault)
        try:
            how = suite_fails()
        finally:
            with open(path, "w", encoding="utf-8") as f:
                f.write(original)
        line = f"{fault[0]:32} {'caught (' + how + ')' if how else 'MISSED':16} {fault[1]}"
        print(line, f"[{time.time() - start:.0f} s]", flush=True)
        lines.append(line)
    caught = sum("caught" in line for line in lines)
    summary = f"{caught} of {len(lines)} planted faults caught"
    print(summary)
    if not argv:
        with open(REPORT, "w", encoding="utf-8") as f:
            f.write("# scripts/faults.py: each planted fault and whether the suite caught it\n")
            f.write("\n".join(lines) + "\n" + summary + "\n")
    run(["cmake", "--build", BUILD, "-j2"])  # leave the build matching the sources
    return 0 if caught == len(lines) else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
