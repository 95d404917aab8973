#!/usr/bin/env python3
"""Prints bench/run's table from the results folder: whole-command times (hyperfine), peak memory
(/usr/bin/time -v), in-process times (Google Benchmark), each ratio beside its target."""
import json
import os
import platform
import re
import subprocess
import sys

out = sys.argv[1]


def means(name):
    with open(os.path.join(out, name + ".json")) as f:
        return [r["mean"] * 1000 for r in json.load(f)["results"]]


def cpu(name):
    with open(os.path.join(out, name + ".json")) as f:
        return [(r["user"] + r["system"]) * 1000 for r in json.load(f)["results"]]


def peak_mib(name):
    with open(os.path.join(out, name + ".time")) as f:
        kb = int(re.search(r"Maximum resident set size \(kbytes\): (\d+)", f.read()).group(1))
    return kb / 1024


def output_mib(name):
    return os.path.getsize(os.path.join(out, name + ".stdout")) / (1024 * 1024)


with open(os.path.join(out, "google.json")) as f:
    google = {b["name"]: b for b in json.load(f)["benchmarks"]}


def inproc_ms(name):
    b = google[name]
    scale = {"ns": 1e-6, "us": 1e-3, "ms": 1.0, "s": 1000.0}[b.get("time_unit", "ns")]
    return b["real_time"] * scale


def verdict(ok):
    return "met" if ok else "MISSED"


startup = means("startup")[0]
rows = []


def compare(what, name, target, inproc=None):
    cmd, base = means(name)
    ratio = cmd / base
    net = (cmd - startup) / base
    ip = inproc_ms(inproc) if inproc else None
    ip_ratio = ip / base if ip else None
    rows.append((what, cmd, base, ratio, net, ip, ip_ratio, target,
                 verdict(ratio <= target), verdict(ip_ratio <= target) if ip else "-", cpu(name)))


compare("list day", "list_day", 2, "BM_ListDay")
compare("list month", "list_month", 2, "BM_ListMonth")
compare("search NAME", "search_name", 2, "BM_SearchName")
compare("search ANY TEXT", "search_any", 2, "BM_SearchAnyText")
compare("onsite (13 months)", "onsite", 3, "BM_OnSite")
upd, cp, durable = means("update")
ip_upd = inproc_ms("BM_Update/15000/real_time")
rows.append(("update, 15,000 lines", upd, cp, upd / cp, (upd - startup) / cp, ip_upd, ip_upd / cp, 3,
             verdict(upd / cp <= 3), verdict(ip_upd / cp <= 3), cpu("update")))
a_big, a_small = means("append")
ip_big = inproc_ms("BM_Append/15000/real_time")
ip_small = inproc_ms("BM_Append/10/real_time")
rows.append(("append, 15,000 vs 10 lines", a_big, a_small, a_big / a_small, None, ip_big, ip_big / ip_small,
             1.5, verdict(a_big / a_small <= 1.5), verdict(ip_big / ip_small <= 1.5), cpu("append")))

print("### Whole commands (hyperfine) and the same work in process (Google Benchmark)\n")
print(f"porvane-admin start-up (a refused command line): {startup:.1f} ms wall, {cpu('startup')[0]:.1f} ms CPU\n")
print("| work | command ms | baseline ms | ratio | ratio net of start-up | CPU ms, command / baseline "
      "| in process ms | in-process ratio | target | command | in process |")
print("|---|---:|---:|---:|---:|---:|---:|---:|---:|---|---|")
for what, cmd, base, ratio, net, ip, ipr, target, v1, v2, c in rows:
    netText = f"{net:.2f}" if net is not None else "-"
    print(f"| {what} | {cmd:.1f} | {base:.1f} | {ratio:.2f} | {netText} | {c[0]:.0f} / {c[1]:.0f} | {ip:.1f} "
          f"| {ipr:.2f} | <= {target} | {v1} | {v2} |")
print("\nBaselines: `grep -c` of a literal over the month file; `cat` of the thirteen month files; `cp` of the "
      "month file; for append, the same save into a month of 10 lines.")
print(f"An update flushes the new file to disk before renaming it; a copy made durable the same way "
      f"(`dd conv=fsync`) takes {durable:.1f} ms, which puts the update at {upd / durable:.2f}x of it.\n")

print("### Peak memory (/usr/bin/time -v)\n")
print("| command | peak RSS MiB | output MiB | target MiB | |")
print("|---|---:|---:|---:|---|")
for name in ["list_day", "list_month", "search_name", "search_any", "onsite"]:
    p, o = peak_mib(name), output_mib(name)
    print(f"| {name.replace('_', ' ')} | {p:.1f} | {o:.1f} | {64 + o:.1f} | {verdict(p <= 64 + o)} |")
for name in ["append", "update", "grep", "cat", "cp"]:
    print(f"| {name} | {peak_mib(name):.1f} | | | |")

print("\n### In process (Google Benchmark)\n")
print("| benchmark | time | rate |")
print("|---|---:|---|")
for name, b in google.items():
    rate = ""
    if "items_per_second" in b:
        rate = f"{b['items_per_second'] / 1e6:.2f} M items/s"
    if "rows" in b:
        rate = f"{int(b['rows'])} rows"
    print(f"| {name} | {inproc_ms(name):.3f} ms | {rate} |")
shown = inproc_ms("BM_DeskMonthListShown/real_time")
print(f"\nMonth list of a 15,000-booking month shown in the desk's grid: {shown:.0f} ms (target < 500 ms: "
      f"{verdict(shown < 500)})\n")


def sh(cmd):
    return subprocess.run(cmd, shell=True, capture_output=True, text=True).stdout.strip()


cpu_model = sh("lscpu | sed -n 's/^Model name: *//p' | head -1")
mem = sh("free -g | awk '/^Mem:/ {print $2}'")
disk = " ".join(sh(f"df -h --output=source,fstype,size {out} | tail -1").split())
rota = sh(f"lsblk -ndo ROTA $(df --output=source {out} | tail -1) 2>/dev/null")
kind = {"0": ", not rotational", "1": ", reported as rotational"}.get(rota, "")
load = os.getloadavg()
print(f"Machine: {os.cpu_count()} CPUs ({sh('nproc')} usable), {cpu_model}, {mem} GiB RAM, disk {disk}{kind}; "
      f"{platform.system()} {platform.release()}; load average at the end {load[0]:.1f}.")
