#!/usr/bin/env python3
"""Prints what sensor_list.c prints, by the package ruxmeta."""
import sys

import ruxmeta

LIMITS = ("THRESHOLD_FL", "THRESHOLD_WL", "THRESHOLD_WH", "THRESHOLD_FH")

print("NAME", "ID", *LIMITS, sep=",")
for sensor in ruxmeta.open(sys.argv[1]).sensors.values():
    print(sensor.name, f"0x{sensor.id:X}", *(sensor.limits.get(key, "") for key in LIMITS), sep=",")
