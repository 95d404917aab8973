#!/usr/bin/env python3
"""Prints bench/run's tables from the results folder: the goals (met / missed) as ratios within the run, the
scaling over 1,000 / 15,000 / 60,000 bookings a month, the bytes the baselines read, and the in-process
figures (Google Benchmark)."""
import json
import os
import platform
import re
import subprocess
import sys

out = sys.argv[1]
sizes = [1000, 15000, 60000]


def results(name):
    with open(os.path.join(out, name + ".json")) as f:
        return json.load(f)["results"]


def means(name):
    # The fastest of the runs: on a machine that others share it is the one least disturbed by their work.
    return [r["min"] * 1000 for r in results(name)]


def peak_mib(name):
    with open(os.path.join(out, name + ".time")) as f:
        kb = int(re.search(r"Maximum resident set size \(kbytes\): (\d+)", f.read()).group(1))
    return kb / 1024


with open(os.path.join(out, "google.json")) as f:
    google = {b["name"]: b for b in json.load(f)["benchmarks"]}


def inproc_ms(name):
    b = google[name]
    scale = {"ns": 1e-6, "us": 1e-3, "ms": 1.0, "s": 1000.0}[b.get("time_unit", "ns")]
    return b["real_time"] * scale


def verdict(ok):
    return "met" if ok else "MISSED"


instructions = {}
with open(os.path.join(out, "instructions.txt")) as f:
    for line in f:
        name, count = line.split()
        instructions[name] = int(count)

goals = []


def goal(work, baseline, cmd, base, target, counted=None):
    ratio = cmd / base
    inst = f"{instructions[counted[0]] / instructions[counted[1]]:.2f}" if counted else ""
    goals.append((work, f"{cmd:.1f}", baseline, f"{base:.1f}", f"{ratio:.2f}", inst, f"<= {target}",
                  verdict(ratio <= target)))


startup, true, qt_core = means("startup")
goal("porvane-admin start-up (a refused command line)", "`true`", startup, true, 3)
# Not a goal: the floor under the one above, what any program on Qt Core costs to start.
goals.append(("a program that only starts Qt Core", f"{qt_core:.1f}", "`true`", f"{true:.1f}",
              f"{qt_core / true:.2f}", "", "", "floor"))
for work, name, target in [("list day", "list_day", 1.5), ("search NAME", "search_name", 1.5),
                           ("list month", "list_month", 2)]:
    cmd, base = means(f"{name}_15000")
    goal(work, "`grep -c` reading the whole month", cmd, base, target, (name, "grep"))
cmd, base = means("search_any_15000")
goal("search ANY TEXT", "`grep -ic` reading the whole month", cmd, base, 1.5, ("search_any", "grep_i"))
cmd, base = means("search_name_13_15000")
goal("search NAME over the 13 months", "`grep -c` reading the 13 files", cmd, base, 1.5,
     ("search_name_13", "grep_13"))
cmd, base = means("onsite_15000")
goal("on-site rebuild and list, 13 months", "`cat` of the 13 files", cmd, base, 1.5)
onsite_growth = means("onsite_60000")[0] / means("onsite_15000")[0]
goals.append(("on-site, 60,000 / 15,000 a month", "", "", "", f"{onsite_growth:.2f}", "", "<= 4.4",
              verdict(onsite_growth <= 4.4)))
upd, dd = means("update")
goal("update in the 15,000-line month", "`dd conv=fsync` of the file", upd, dd, 1.5)
shown = inproc_ms("BM_DeskMonthListShown/real_time")
with open(os.path.join(out, "google_desk.json")) as f:
    growth = json.load(f)["benchmarks"][0].get("rss_growth_MiB", float("nan"))
shown_cpu = google["BM_DeskMonthListShown/real_time"]["cpu_time"] * inproc_ms(
    "BM_DeskMonthListShown/real_time") / google["BM_DeskMonthListShown/real_time"]["real_time"]
goals.append(("desk: month list of 15,000 bookings shown (wall; CPU in brackets)", f"{shown:.1f} ({shown_cpu:.1f})",
              "", "", "", "", "<= 15 ms", verdict(shown <= 15)))
goals.append(("desk: memory growth for that list", "", f"{growth:.1f} MiB", "", "", "", "<= 5 MiB",
              verdict(growth <= 5)))
streaming = ["list_day", "list_month", "search_name", "search_any", "search_name_13", "onsite"]
worst = max(peak_mib(f"{n}_60000") for n in streaming)
goals.append(("peak memory of the list commands at 60,000", "", f"{worst:.1f} MiB", "", "", "", "<= 16 MiB",
              verdict(worst <= 16)))

print("### Goals\n")
print("Each ratio is taken within this run, with the command and its baseline timed side by side; times are "
      "the fastest of the runs.\n")
print("Instructions: user-space instructions of the command over grep's (callgrind), steady where times are "
      "not; the kernel's work (reading the file) is the same for both and not in them. `cat` and `dd` do "
      "nearly all their work in the kernel, so they get no such ratio.\n")
print("| work | command ms | baseline | baseline ms | ratio | instructions ratio | goal | |")
print("|---|---:|---|---:|---:|---:|---|---|")
for row in goals:
    print("| " + " | ".join(row) + " |")

print("\n### Scaling (13 months of N bookings each; the commands read the month of 18 November 2026, search name 13 "
      "and onsite all thirteen)\n")
print("| work | N | command ms | baseline ms | ratio | peak RSS MiB |")
print("|---|---:|---:|---:|---:|---:|")
for name in streaming:
    for size in sizes:
        cmd, base = means(f"{name}_{size}")
        print(f"| {name.replace('_', ' ')} | {size:,} | {cmd:.1f} | {base:.1f} | {cmd / base:.2f} "
              f"| {peak_mib(f'{name}_{size}'):.1f} |")

print("\n### Instructions (callgrind, 15,000 bookings a month)\n")
print("| command | instructions |")
print("|---|---:|")
for name, count in instructions.items():
    print(f"| {name.replace('_', ' ')} | {count:,} |")

print("\n### The bookings on a PostgreSQL server beside the data folder (15,000 a month, whole commands)\n")
print("| work | server ms | data folder ms | server / folder |")
print("|---|---:|---:|---:|")
for work, name in [("list day", "list_day"), ("list month", "list_month"), ("search NAME", "search_name"),
                   ("search ANY TEXT", "search_any"), ("search NAME, 13 months", "search_name_13"),
                   ("on-site rebuild and list, 13 months", "onsite")]:
    server, folder = means(f"server_{name}")
    print(f"| {work} | {server:.1f} | {folder:.1f} | {server / folder:.2f} |")

print("\n### What the baselines read (strace)\n")
print("| N | month file bytes | `grep -c` read | `grep -ic` read | 13 files bytes | `cat` read | `grep -c` 13 files read |")
print("|---:|---:|---:|---:|---:|---:|---:|")
with open(os.path.join(out, "bytes.txt")) as f:
    for line in f:
        n, size, g, gi, total, c, g13 = (int(v) for v in line.split())
        print(f"| {n:,} | {size:,} | {g:,} | {gi:,} | {total:,} | {c:,} | {g13:,} |")

print("\n### In process (Google Benchmark, 15,000 bookings a month)\n")
print("| benchmark | time | rate |")
print("|---|---:|---|")
for name, b in google.items():
    rate = ""
    if "items_per_second" in b:
        rate = f"{b['items_per_second'] / 1e6:.2f} M items/s"
    if "rows" in b:
        rate = f"{int(b['rows'])} rows"
    print(f"| {name} | {inproc_ms(name):.3f} ms | {rate} |")


def sh(cmd):
    return subprocess.run(cmd, shell=True, capture_output=True, text=True).stdout.strip()


cpu_model = sh("lscpu | sed -n 's/^Model name: *//p' | head -1")
mem = sh("free -g | awk '/^Mem:/ {print $2}'")
disk = " ".join(sh(f"df -h --output=source,fstype,size {out} | tail -1").split())
load = os.getloadavg()
print(f"\nMachine: {os.cpu_count()} CPUs ({sh('nproc')} usable), {cpu_model}, {mem} GiB RAM, disk {disk}; "
      f"{platform.system()} {platform.release()}; load average at the end {load[0]:.1f}.")
