#!/usr/bin/env python3
"""Writes made-up online data into an application folder, for pictures and
trials without a network: a VATSIM text file with pilots and controllers over
Germany, METAR reports for the folder's weather stations, and a North Atlantic
track message.  make-online-samples.py APPDIR.  Deterministic: the same folder
gets the same files.  None of it is real traffic or weather."""
import os
import random
import sys

app = sys.argv[1] if len(sys.argv) > 1 else "demo"
db = os.path.join(app, "database")
rng = random.Random(2026)
airports = [("EDDF", 50.0333, 8.5706), ("EDDM", 48.3538, 11.7861), ("EDDL", 51.2895, 6.7668),
            ("EDDH", 53.6304, 9.9882), ("EDDB", 52.3667, 13.5033), ("EDDK", 50.8659, 7.1427),
            ("EDDS", 48.6899, 9.2220), ("EDDN", 49.4987, 11.0780), ("LOWW", 48.1103, 16.5697),
            ("LSZH", 47.4647, 8.5492), ("EHAM", 52.3086, 4.7639), ("EBBR", 50.9014, 4.4844)]
types = ["A320", "B738", "A321", "B77W", "A359", "E190", "CRJ9", "A20N", "B789", "C172"]
lines = ["; made-up VATSIM data for pictures and trials, not real traffic",
         "!GENERAL:", "VERSION = 8", "RELOAD = 2", "UPDATE = 20261124120000",
         "CONNECTED CLIENTS = 60", "!CLIENTS:"]
for i in range(48):
    dep, dest = rng.sample(airports, 2)
    f = rng.random()
    lat = dep[1] + (dest[1] - dep[1]) * f + rng.uniform(-0.3, 0.3)
    lon = dep[2] + (dest[2] - dep[2]) * f + rng.uniform(-0.3, 0.3)
    alt = rng.choice([4000, 11000, 24000, 31000, 35000, 37000])
    gs = 180 + alt // 150
    import math
    hdg = int((math.degrees(math.atan2((dest[2] - dep[2]) * math.cos(math.radians(lat)), dest[1] - dep[1]))) % 360)
    cs = rng.choice(["DLH", "EWG", "BAW", "AFR", "KLM", "SWR", "AUA", "RYR", "EZY", "UAE"]) + str(rng.randint(10, 9999))
    lines.append(f"{cs}:{1200000 + i}:Pilot {i}:PILOT::{lat:.5f}:{lon:.5f}:{alt}:{gs}:{rng.choice(types)}:450:"
                 f"{dep[0]}:FL{alt // 100}:{dest[0]}:GERMANY:B:2:1200:0:0:1:I::::::::N0450F350 DCT:::::::"
                 f"20261124110000:VPILOT:1.0:2:0:{hdg}:0")
atc = [("EDDF_TWR", 119.900, "EDDF"), ("EDDF_APP", 120.800, "EDDF"), ("EDDF_GND", 121.900, "EDDF"),
       ("EDDM_TWR", 118.700, "EDDM"), ("EDDM_APP", 127.950, "EDDM"), ("EDDL_TWR", 118.300, "EDDL"),
       ("EDDH_APP", 119.050, "EDDH"), ("EDDB_TWR", 118.800, "EDDB"), ("LOWW_APP", 134.675, "LOWW"),
       ("EHAM_TWR", 118.275, "EHAM"), ("LSZH_TWR", 118.100, "LSZH")]
where = {a[0]: a for a in airports}
for k, (cs, freq, ap) in enumerate(atc):
    _, lat, lon = where[ap]
    lines.append(f"{cs}:{2000000 + k}:Controller {k}:ATC:{freq:.3f}:{lat:.5f}:{lon:.5f}:0:0::::::GERMANY:B:5:0:0:100"
                 f"::::::::::::::::{cs} information A:20261124110000")
lines += ["!SERVERS:", "GERMANY:127.0.0.1:Europe:Sample server:1", "!PREFILE:"]
with open(os.path.join(db, "orv_vatsim.txt"), "w", newline="") as f:
    f.write("\r\n".join(lines) + "\r\n")

bodies = ["27015G25KT 9999 FEW030 SCT045 12/07 Q1013 NOSIG", "VRB03KT 4000 BR BKN008 OVC020 05/04 Q1008",
          "12005KT CAVOK M05/M07 Q1030", "31012KT 9999 -RA BKN025 OVC060 08/06 Q1011",
          "00000KT 0800 FG VV002 02/02 Q1021", "24018G32KT 3000 +TSRA SCT020CB BKN040 18/16 Q1002",
          "08006KT 9999 -SN OVC012 M01/M03 Q1017"]
reports = []
with open(os.path.join(db, "WxStation.txt")) as f:
    for line in f:
        parts = line.strip().split(",")
        if len(parts) < 3:
            continue
        ident = parts[0]
        if ident[:2] in ("ED", "LO", "LS", "EH", "EB", "LK", "EP", "LF", "ET"):
            reports.append(f"{ident} 241120Z {rng.choice(bodies)}")
with open(os.path.join(db, "orv_metar.txt"), "w", newline="") as f:
    f.write("\r\n".join(reports) + "\r\n")

nat = ["<html><head><title>North Atlantic Tracks</title></head><body><pre>",
       "(NAT-1/1 TRACKS FLS 310/390 INCLUSIVE", "NOV 24/1130Z TO NOV 24/1900Z", "PART ONE OF ONE PART-"]
for i, name in enumerate("ABCDEF"):
    lat = 58 - i
    nat.append(f"{name} {lat}/10 {lat}/20 {lat - 1}/30 {lat - 2}/40 {lat - 3}/50")
    nat += ["EAST LVLS NIL", "WEST LVLS 310 320 330 340 350 360 370", "EUR RTS WEST NIL", "NAR NIL-"]
nat += ["REMARKS:", "1. MADE-UP TRACKS FOR PICTURES, NOT FOR NAVIGATION", "END OF PART ONE OF ONE PART)",
        "</pre></body></html>"]
with open(os.path.join(db, "North Atlantic Tracks.htm"), "w", newline="") as f:
    f.write("\r\n".join(nat) + "\r\n")
print(f"wrote {len(lines) - 10} clients, {len(reports)} METAR reports and 6 tracks into {db}")
