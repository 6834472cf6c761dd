#!/usr/bin/env python3
"""Writes examples/storelist.xml: a realistic store list of fixed-frequency and
short-time entries with their settings, deterministic from a fixed seed.

The file is in the library's own XML layout (four blanks of indentation, one
element a line), so that loading it and saving it again gives the same bytes.
"""

import random
import sys

random.seed(20261123)

lines = ['<?xml version="1.0" encoding="UTF-8"?>']
depth = 0


def open_(tag, attrs=""):
    global depth
    lines.append("    " * depth + f"<{tag}{attrs}>")
    depth += 1


def close(tag):
    global depth
    depth -= 1
    lines.append("    " * depth + f"</{tag}>")


def text(tag, value, attrs=""):
    lines.append("    " * depth + f"<{tag}{attrs}>{value}</{tag}>")


def f2(value):
    return f"{value:.2f}"


FIXED = [
    # type, label, frequency Hz, IF bandwidth Hz, demodulation, comment
    ("Maritime", "Coast station Lyngby", 8_416_500, 3_000, "USB", "GMDSS DSC watch"),
    ("Maritime", "Channel 16", 156_800_000, 12_500, "FM", "Distress, safety and calling"),
    ("Maritime", "Channel 70", 156_525_000, 12_500, "FM", "DSC"),
    ("Aviation", "Shanwick Oceanic", 8_891_000, 3_000, "USB", "North Atlantic track"),
    ("Aviation", "Vienna Approach", 134_675_000, 8_330, "AM", None),
    ("Aviation", "Guard", 121_500_000, 25_000, "AM", "Emergency"),
    ("Aviation", "VOLMET Shannon", 5_505_000, 3_000, "USB", None),
    ("Broadcast", "Time signal DCF77", 77_500, 300, "CW", "Reference"),
    ("Broadcast", "Weather fax Hamburg", 7_880_000, 3_000, "FAX1", "Pinneberg"),
    ("Broadcast", "NAVTEX", 518_000, 500, "FSK", None),
    ("Amateur", "Packet APRS", 144_800_000, 12_500, "FM", None),
    ("Amateur", "PSK31 20 m", 14_070_000, 2_700, "USB", "Digital modes"),
    ("Utility", "STANAG 4285 net", 6_785_000, 3_000, "USB", "Unidentified net"),
    ("Utility", "ALE scan channel", 10_145_000, 3_000, "USB", None),
    ("Utility", "Pager POCSAG", 466_075_000, 12_500, "FM", "Paging"),
    ("Utility", "Selcall ZVEI", 169_800_000, 12_500, "FM", None),
    ("Land mobile", "Taxi dispatch", 86_450_000, 12_500, "FM", None),
    ("Land mobile", "Railway GSM-R", 921_200_000, 200_000, "IQ", "Track side"),
    ("Satellite", "NOAA 19 APT", 137_100_000, 40_000, "FM", "Weather satellite"),
    ("Satellite", "Inmarsat EGC", 1_537_700_000, 5_000, "IQ", None),
    ("Broadcast", "Radio Austria Int.", 6_155_000, 9_000, "AM", "Short wave"),
    ("Utility", "Unknown carrier", 4_610_000, 1_000, "UNKNOWN", "Seen at night"),
]

SHORT = [
    # type, label, start Hz, stop Hz, spacing Hz, hops per second, comment
    ("Hopper", "Tactical hopper A", 30_000_000, 88_000_000, 25_000, 100.0, "VHF band"),
    ("Hopper", "Tactical hopper B", 225_000_000, 400_000_000, 25_000, 312.5, None),
    ("Hopper", "HF hopper", 2_000_000, 30_000_000, 1_000, 5.125, "Slow hopping"),
    ("Burst", "Burst transmitter", 140_000_000, 150_000_000, 12_500, 0.0, "Short bursts"),
    ("Hopper", "Hopper with snapshot", 400_000_000, 470_000_000, 12_500, 50.0, None),
    ("Burst", "Data burst UHF", 410_000_000, 430_000_000, 6_250, 0.125, None),
]

USAGES = ["Target", "Known", "WellKnown", "NotOfInterest", "Matching"]

open_("FrequencyStoreList", ' Version="1.2"')
text("Name", "Monitoring plan Danube region")
text("Usage", "Target")
text("Timstamp", "2026-11-23T08:30:00,000Z")
open_("Targetareas")
for name, corners, script in [
    ("Vienna basin", [(16.18, 48.12), (16.58, 48.12), (16.58, 48.32), (16.18, 48.32)], None),
    ("Danube corridor", [(15.2, 48.1), (17.1, 48.0), (17.2, 48.3), (15.3, 48.4), (15.0, 48.3)], "corridor-2"),
    ("Adriatic coast", [(13.5, 45.2), (14.1, 45.9), (15.0, 44.6)], None),
]:
    open_("Area")
    text("Name", name)
    for lon, lat in corners:
        open_("Coordinate")
        text("Longitude", f"{lon:.6f}")
        text("Latitude", f"{lat:.6f}")
        close("Coordinate")
    if script:
        text("ScriptID", script)
    close("Area")
close("Targetareas")

number = 0
for round_ in range(2):
    for kind, label, frequency, bandwidth, demod, comment in FIXED:
        number += 1
        open_("FrequencyStoreEntry", ' Version="2.0"')
        text("Usage", USAGES[number % len(USAGES)])
        text("ID", f"FS-{number:04d}")
        text("Type", kind)
        if number % 3:
            text("Antenna", ["HF whip", "Discone", "Log periodic", "Active loop"][number % 4])
        note = comment if round_ == 0 else (f"{comment}, second site" if comment else "Second site")
        if note:
            text("Comment", note)
        open_("FFM_Settings", ' Version="1.2"')
        freq = frequency + round_ * bandwidth
        if number % 4 == 0:
            text("Frequency", f2(freq), f' Min="{f2(freq - bandwidth)}" Max="{f2(freq + bandwidth)}"')
        else:
            text("Frequency", f2(freq))
        text("IFBandwidth", f2(bandwidth))
        if number % 2:
            text("IFStep", f2(bandwidth / 2))
        text("IFStepAuto", "false" if number % 2 else "true")
        text("BandwidthMode", "Coupled" if number % 3 == 0 else "Manual")
        text("AnalogDemod", demod)
        text("Level", f2(random.uniform(-20.0, 40.0)))
        if number % 5 == 0:
            text("UpperLevel", f2(random.uniform(40.0, 80.0)))
        if number % 2 == 0:
            open_("Detail", ' Version="1.2"')
            text("Gain_Ctrl", ["AGC", "MGC"][number % 2 and 1])
            text("MGCValue", f2(random.uniform(0.0, 60.0)))
            text("Attenuation", ["OFF", "ON", "AUTO", "MANUAL"][number % 4])
            text("AFC", "ON" if number % 3 else "OFF")
            text("Active", "true")
            text("Alarm", "false" if number % 5 else "true")
            text("ChannelNo", str(number))
            text("SquelchState", "ON")
            text("SquelchValue", str(random.randint(-20, 20)))
            text("GainControlTime", ["Default", "Fast", "Slow"][number % 3])
            text("Preselection", ["LOW NOISE", "NORMAL", "LOW DISTORT"][number % 3])
            text("LevelDetector", ["AVG", "PEAK", "FAST", "RMS", "RDS"][number % 5])
            text("MeasuremetTime", f"2026-11-{10 + number % 12:02d}T{number % 24:02d}:{number * 7 % 60:02d}:00,{number * 37 % 1000:03d}Z")
            text("AntennaPolarisation", ["VERTICAL", "HORIZONTAL"][number % 2])
            close("Detail")
        text("TunerMode", "PanoramaScan" if number % 7 == 0 else "FixedFrequency")
        if number % 7 == 0:
            open_("PScanSettings")
            text("StartFrequency", f2(freq - 50 * bandwidth))
            text("StopFrequency", f2(freq + 50 * bandwidth))
            text("FrequencyStep", f2(bandwidth))
            close("PScanSettings")
        close("FFM_Settings")
        if number % 6 == 0:
            text("AdditionalInfo", "Reviewed by the watch officer")
        close("FrequencyStoreEntry")

    for kind, label, start, stop, spacing, hops, comment in SHORT:
        number += 1
        open_("FrequencyStoreEntry", ' Version="2.0"')
        text("Usage", "Target")
        text("ID", f"ST-{number:04d}")
        text("Type", kind)
        text("Comment", label if comment is None else f"{label}: {comment}")
        open_("ShortTime_Settings")
        if hops:
            text("HopsPerSecond", f"{hops:.8f}")
            text("UseHopsPerSecond", "true")
        open_("Range", ' Use="true"')
        text("StartFreq", f2(start))
        text("StopFreq", f2(stop))
        text("FreqSpacing", f2(spacing))
        close("Range")
        open_("SignalLength", ' Use="true"')
        text("Min", f2(0.01 * (1 + round_)))
        text("Max", f2(2.5))
        close("SignalLength")
        text("Bandwidth", f2(spacing * 0.8))
        text("SnapshotLength", f2(1.5 + round_))
        open_("Detail")
        text("AnalysisDepth", ["Normal", "Deep"][round_])
        text("NoiseLevel", f2(-110.0 + round_ * 3))
        text("NoiseLevelMode", "Auto")
        text("OperatingMode", ["Search", "Track"][number % 2])
        text("SignalLevelMax", f2(-20.0))
        text("SNRMin", f2(10.0 + round_))
        close("Detail")
        text("Break", f2(0.5))
        for k in range(3 + number % 4):
            value = start + (k * 7 + 3) * spacing * 11
            if value > stop:
                value = start + k * spacing
            text("Frequency", f2(value))
        close("ShortTime_Settings")
        close("FrequencyStoreEntry")

close("FrequencyStoreList")
sys.stdout.write("\n".join(lines) + "\n")
