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

# Five entries that carry the whole tree beyond their settings branch: profile
# data with points of interest, demodulators of several variants, locations
# with stations, bearings, emissions and location results, stations of the
# entry, detection, result list, direction-finding and shape-detector
# settings. Written out as the library writes them.
WHOLE_TREES = r"""
    <FrequencyStoreEntry Version="2.0">
        <Usage>Target</Usage>
        <ID>FT-0101</ID>
        <Type>Trunked radio</Type>
        <Antenna>Discone</Antenna>
        <Comment>Harbour TETRA control channel</Comment>
        <FFM_Settings Version="1.2">
            <Frequency>390112500.00</Frequency>
            <IFBandwidth>25000.00</IFBandwidth>
            <AnalogDemod>IQ</AnalogDemod>
            <Level>12.50</Level>
            <TunerMode>FixedFrequency</TunerMode>
        </FFM_Settings>
        <Profile_Data>
            <SignalClass>Digital voice</SignalClass>
            <ProfileID>P-0042</ProfileID>
            <TransmissionSystem>TETRA</TransmissionSystem>
            <ProfileName>Harbour operations</ProfileName>
            <ObjectName>Pier 3</ObjectName>
            <Priority>high</Priority>
            <ThreatClass>low</ThreatClass>
            <PointOfInterest>
                <DisplayName>Container terminal</DisplayName>
                <Location>
                    <Longitude>16.423611</Longitude>
                    <Latitude>48.187500</Latitude>
                </Location>
                <Radius>1500.00</Radius>
            </PointOfInterest>
            <PointOfInterest>
                <DisplayName>Oil harbour</DisplayName>
                <Location>
                    <Longitude>16.447222</Longitude>
                    <Latitude>48.179167</Latitude>
                </Location>
                <Ellipse>
                    <MinRadius>400.00</MinRadius>
                    <MaxRadius>1200.00</MaxRadius>
                    <Rotation>35.00</Rotation>
                </Ellipse>
            </PointOfInterest>
        </Profile_Data>
        <Demodulator_Settings>
            <Mode>PSK</Mode>
            <FrequencyOffset>0.00</FrequencyOffset>
            <PSK_Settings>
                <ModType>PSK4B</ModType>
                <Baudrate>18000.00</Baudrate>
                <Detail>
                    <BaudCapRange>50.00</BaudCapRange>
                    <BaudTrackRange>10.00</BaudTrackRange>
                    <EqualizerMode>true</EqualizerMode>
                    <FFE_FilterOrder>8.00</FFE_FilterOrder>
                    <FFE_ConvergenceFactor>0.05</FFE_ConvergenceFactor>
                    <FrqOffTrack>250.00</FrqOffTrack>
                    <Sideband>Upper (USB)</Sideband>
                </Detail>
            </PSK_Settings>
        </Demodulator_Settings>
        <DF_Settings Version="1.0">
            <Bandwidth>25000.00</Bandwidth>
            <DFMode>Norm</DFMode>
            <DFStep>12500.00</DFStep>
            <FreqSpan>100000.00</FreqSpan>
            <Averaging>2.00</Averaging>
            <Workflow>Continuous</Workflow>
            <Activity>Locate allowed</Activity>
            <ActivityTrigger>Frequency change</ActivityTrigger>
            <Method>CORRELATION</Method>
            <Selectivity>NARROW</Selectivity>
            <FrequencyOffset>0.00</FrequencyOffset>
            <ApplicationMode>Monitoring</ApplicationMode>
            <ICMMode>Off</ICMMode>
            <MonitoredVTCFrequencies>390112500</MonitoredVTCFrequencies>
            <Detail>
                <QualityThreshold>60</QualityThreshold>
                <LevelThreshold>-95.00</LevelThreshold>
                <ElevationMin>-5</ElevationMin>
                <ElevationMax>45</ElevationMax>
            </Detail>
        </DF_Settings>
        <ShapeDetectorSettings>
            <GenericShape>Continuous carrier</GenericShape>
            <GenericShape>TDMA 4 slots</GenericShape>
            <Shape>TETRA downlink</Shape>
        </ShapeDetectorSettings>
        <AdditionalInfo>Checked against the harbour operator's licence</AdditionalInfo>
    </FrequencyStoreEntry>
    <FrequencyStoreEntry Version="2.0">
        <Usage>Target</Usage>
        <ID>FT-0102</ID>
        <Type>Paging</Type>
        <Comment>Hospital pager network</Comment>
        <FFM_Settings Version="1.2">
            <Frequency>466075000.00</Frequency>
            <IFBandwidth>12500.00</IFBandwidth>
            <AnalogDemod>FM</AnalogDemod>
            <TunerMode>FixedFrequency</TunerMode>
        </FFM_Settings>
        <Profile_Data>
            <SignalClass>Data</SignalClass>
            <ProfileID>P-0107</ProfileID>
            <TransmissionSystem>POCSAG</TransmissionSystem>
            <ProfileName>Pager 1200</ProfileName>
        </Profile_Data>
        <Demodulator_Settings>
            <Mode>POCSAG</Mode>
            <FrequencyOffset>-150.00</FrequencyOffset>
            <Decoder>
                <Value>POCSAG 1200</Value>
                <Value>POCSAG 2400</Value>
            </Decoder>
            <Alphabet>ASCII</Alphabet>
            <POCSAG_Settings>
                <ModType>POCSAG</ModType>
                <Baudrate Min="512.00" Max="2400.00">1200.00</Baudrate>
            </POCSAG_Settings>
        </Demodulator_Settings>
        <Detection>
            <StartTime>2026-11-23T06:12:40,250Z</StartTime>
            <StopTime>2026-11-23T06:14:02,000Z</StopTime>
        </Detection>
        <ResultList>
            <Reason>Matched profile P-0107</Reason>
            <ResultTime>2026-11-23T06:15:00,000Z</ResultTime>
            <Confidence>87</Confidence>
        </ResultList>
    </FrequencyStoreEntry>
    <FrequencyStoreEntry Version="2.0">
        <Usage>Resultlist</Usage>
        <ID>FT-0103</ID>
        <Type>Located emitter</Type>
        <Antenna>DF array</Antenna>
        <Comment>Unknown FSK data, located twice</Comment>
        <FFM_Settings Version="1.2">
            <Frequency>8646000.00</Frequency>
            <IFBandwidth>3000.00</IFBandwidth>
            <AnalogDemod>USB</AnalogDemod>
            <TunerMode>FixedFrequency</TunerMode>
        </FFM_Settings>
        <Profile_Data>
            <SignalClass>Data</SignalClass>
            <ProfileID>P-0200</ProfileID>
            <TransmissionSystem>FSK 100 Bd</TransmissionSystem>
            <ProfileName>Coastal telex</ProfileName>
            <PointOfInterest>
                <Location>
                    <Longitude>14.286111</Longitude>
                    <Latitude>45.327778</Latitude>
                </Location>
                <Radius>20000.00</Radius>
            </PointOfInterest>
        </Profile_Data>
        <Demodulator_Settings>
            <Mode>FSK</Mode>
            <FrequencyOffset>85.00</FrequencyOffset>
            <FSK_Settings>
                <ModType>FSK2</ModType>
                <Baudrate>100.00</Baudrate>
                <Shift>170.00</Shift>
                <Detail>
                    <Variant>Matched Filter</Variant>
                    <BaudCapRange>5.00</BaudCapRange>
                    <BaudTrackRange>1.00</BaudTrackRange>
                    <FrqOffTrack>20.00</FrqOffTrack>
                    <Sideband>Upper (USB)</Sideband>
                </Detail>
            </FSK_Settings>
        </Demodulator_Settings>
        <Location>
            <Station>
                <StationID>1</StationID>
                <OWNStation>true</OWNStation>
                <TimeStamp>2026-11-23T07:58:12,500Z</TimeStamp>
                <Longitude>16.333333</Longitude>
                <Latitude>48.276111</Latitude>
                <Name>Kahlenberg</Name>
                <DFData>
                    <Quality>91.25</Quality>
                    <Frequency>8646000.00</Frequency>
                    <Azimuth>203.40</Azimuth>
                    <Level>-71.50</Level>
                    <Detail>
                        <Antenna>ADD-197</Antenna>
                        <Elevation>12.50</Elevation>
                        <ElevationVar>0.75</ElevationVar>
                        <Compass>359.99</Compass>
                        <StdDeviation>1.25</StdDeviation>
                    </Detail>
                    <Plot_Info>
                        <KVF-CL-ID>7</KVF-CL-ID>
                        <Emissions>
                            <Count>1</Count>
                            <Emission>
                                <Azimuth>203.50</Azimuth>
                                <AzimuthVar>2.25</AzimuthVar>
                                <Elevation>3.50</Elevation>
                                <Level>-70.75</Level>
                                <StartTime>2026-11-23T07:58:00,000Z</StartTime>
                                <StopTime>2026-11-23T07:58:12,000Z</StopTime>
                                <Bursts>
                                    <Count>2</Count>
                                    <Burst>
                                        <Frequency>8646000.00</Frequency>
                                        <Bandwidth>300.00</Bandwidth>
                                        <Quality>88.00</Quality>
                                        <Azimuth>203.25</Azimuth>
                                        <AzimuthVar>1.50</AzimuthVar>
                                        <Level>-70.50</Level>
                                        <StartTime>2026-11-23T07:58:01,125Z</StartTime>
                                        <StopTime>2026-11-23T07:58:02,000Z</StopTime>
                                    </Burst>
                                    <Burst>
                                        <Frequency>8646000.00</Frequency>
                                        <Bandwidth>300.00</Bandwidth>
                                        <Quality>86.50</Quality>
                                        <Azimuth>203.75</Azimuth>
                                        <AzimuthVar>1.75</AzimuthVar>
                                        <Elevation>3.25</Elevation>
                                        <ElevationVar>0.50</ElevationVar>
                                        <Level>-71.00</Level>
                                        <StartTime>2026-11-23T07:58:05,500Z</StartTime>
                                        <StopTime>2026-11-23T07:58:06,250Z</StopTime>
                                    </Burst>
                                </Bursts>
                            </Emission>
                        </Emissions>
                    </Plot_Info>
                </DFData>
                <PositionSource>GPS</PositionSource>
            </Station>
            <Station>
                <StationID>2</StationID>
                <OWNStation>false</OWNStation>
                <Longitude>15.439167</Longitude>
                <Latitude>47.066667</Latitude>
                <Name>Graz Schlossberg</Name>
                <DFData>
                    <Quality>74.00</Quality>
                    <Frequency>8646000.00</Frequency>
                    <Azimuth>188.10</Azimuth>
                    <Level>-78.25</Level>
                </DFData>
                <PositionSource>Survey</PositionSource>
            </Station>
            <LocationResult>
                <TimeStamp>2026-11-23T07:58:15,000Z</TimeStamp>
                <DFBandwidth>3000.00</DFBandwidth>
                <Location>
                    <Longitude>14.290000</Longitude>
                    <Latitude>45.330000</Latitude>
                </Location>
                <Detail>
                    <Frequency>8646000.00</Frequency>
                </Detail>
                <Plot>
                    <Name>Telex plot</Name>
                    <Signal_ID>4711</Signal_ID>
                    <Emitter_ID>12</Emitter_ID>
                    <Bandwidth>300.00</Bandwidth>
                    <Type>Static</Type>
                    <Ellipse>
                        <MinRadius>2500.00</MinRadius>
                        <MaxRadius>9000.00</MaxRadius>
                        <Rotation>-12.50</Rotation>
                    </Ellipse>
                    <StartTime>2026-11-23T07:58:00,000Z</StartTime>
                    <StopTime>2026-11-23T07:58:12,000Z</StopTime>
                    <FrequencyList>
                        <Value>
                            <Frequency>8646000.00</Frequency>
                            <TimeStamp>2026-11-23T07:58:00,000Z</TimeStamp>
                        </Value>
                    </FrequencyList>
                    <Detail>
                        <Comment>Cross bearing of two stations</Comment>
                        <AnalogDemod>F1B</AnalogDemod>
                    </Detail>
                </Plot>
                <Station>
                    <StationID>1</StationID>
                    <OWNStation>true</OWNStation>
                    <Name>Kahlenberg</Name>
                </Station>
                <Station>
                    <StationID>2</StationID>
                    <OWNStation>false</OWNStation>
                    <Name>Graz Schlossberg</Name>
                </Station>
            </LocationResult>
            <LocationResult>
                <TimeStamp>2026-11-23T09:02:40,000Z</TimeStamp>
                <DFBandwidth>3000.00</DFBandwidth>
                <Detail>
                    <Frequency>8646000.00</Frequency>
                </Detail>
            </LocationResult>
        </Location>
        <Station>
            <StationID>1</StationID>
            <OWNStation>true</OWNStation>
            <Longitude>16.333333</Longitude>
            <Latitude>48.276111</Latitude>
            <Name>Kahlenberg</Name>
            <PositionSource>GPS</PositionSource>
        </Station>
        <Detection>
            <StartTime>2026-11-23T07:58:00,000Z</StartTime>
        </Detection>
        <ResultList>
            <Reason>Location inside target area</Reason>
            <Confidence>64</Confidence>
        </ResultList>
        <DF_Settings Version="1.0">
            <Bandwidth>3000.00</Bandwidth>
            <DFMode>Cont</DFMode>
            <Averaging>1.00</Averaging>
            <Method>WATSONWATT</Method>
            <Selectivity>AUTO</Selectivity>
        </DF_Settings>
    </FrequencyStoreEntry>
    <FrequencyStoreEntry Version="2.0">
        <Usage>Target</Usage>
        <ID>ST-0104</ID>
        <Type>Hopper</Type>
        <Comment>Tactical hopper with located bursts</Comment>
        <ShortTime_Settings>
            <HopsPerSecond>100.00000000</HopsPerSecond>
            <UseHopsPerSecond>true</UseHopsPerSecond>
            <Bandwidth>25000.00</Bandwidth>
            <Frequency>30025000.00</Frequency>
            <Frequency>31150000.00</Frequency>
            <Frequency>33475000.00</Frequency>
        </ShortTime_Settings>
        <Profile_Data>
            <SignalClass>Frequency hopper</SignalClass>
            <ProfileID>P-0311</ProfileID>
            <TransmissionSystem>VHF hopper</TransmissionSystem>
            <ProfileName>Hopper 100 h/s</ProfileName>
            <Priority>medium</Priority>
        </Profile_Data>
        <Demodulator_Settings>
            <Mode>MFSK</Mode>
            <FrequencyOffset>0.00</FrequencyOffset>
            <ChannelSelection>
                <Value>1</Value>
                <Value>2</Value>
            </ChannelSelection>
            <MFSK_Settings>
                <ModType>McFSK2</ModType>
                <Baudrate>75.00</Baudrate>
                <Shift>250.00</Shift>
            </MFSK_Settings>
        </Demodulator_Settings>
        <Location>
            <LocationResult>
                <TimeStamp>2026-11-23T10:15:00,000Z</TimeStamp>
                <DFBandwidth>25000.00</DFBandwidth>
                <Location>
                    <Longitude>16.120000</Longitude>
                    <Latitude>47.950000</Latitude>
                </Location>
                <Detail>
                    <Frequency>31150000.00</Frequency>
                </Detail>
                <Plot>
                    <Name>Hopper track</Name>
                    <Bandwidth>25000.00</Bandwidth>
                    <Type>Hopper</Type>
                    <Radius>3500.00</Radius>
                    <StartTime>2026-11-23T10:14:00,000Z</StartTime>
                    <StopTime>2026-11-23T10:15:00,000Z</StopTime>
                    <FrequencyList>
                        <Value>
                            <Frequency>30025000.00</Frequency>
                        </Value>
                        <Value>
                            <Frequency>31150000.00</Frequency>
                        </Value>
                        <Value>
                            <Frequency>33475000.00</Frequency>
                        </Value>
                    </FrequencyList>
                    <Detail>
                        <AnalogDemod>FSK</AnalogDemod>
                    </Detail>
                </Plot>
            </LocationResult>
        </Location>
    </FrequencyStoreEntry>
    <FrequencyStoreEntry Version="2.0">
        <Usage>Known</Usage>
        <ID>FT-0105</ID>
        <Type>Beacon</Type>
        <Comment>Morse beacon</Comment>
        <FFM_Settings Version="1.2">
            <Frequency>7039000.00</Frequency>
            <IFBandwidth>500.00</IFBandwidth>
            <AnalogDemod>CW</AnalogDemod>
            <TunerMode>FixedFrequency</TunerMode>
        </FFM_Settings>
        <Demodulator_Settings>
            <Mode>Morse</Mode>
            <FrequencyOffset>700.00</FrequencyOffset>
            <Morse_Settings>
                <Speed>18.00</Speed>
                <AutoMode>true</AutoMode>
            </Morse_Settings>
        </Demodulator_Settings>
        <Location/>
    </FrequencyStoreEntry>
"""
lines.extend(WHOLE_TREES.strip("\n").split("\n"))

close("FrequencyStoreList")
sys.stdout.write("\n".join(lines) + "\n")
