#ifndef MORVANE_TESTS_TREESAMPLES_H
#define MORVANE_TESTS_TREESAMPLES_H

// Complete samples of the records below a store entry: stations, profile
// data, plots, emissions and location results. Each builder fills every
// member the record has, so that a round trip of the sample walks the whole
// record. The golden file of the full entry tree was written from these
// samples; a change here needs a new golden file.

#include "samples.h"

#include <morvane.h>

namespace samples {

inline Morvane::Ellipse ellipse(double minRadius = 120.5, double maxRadius = 480.25, double rotation = -33.75)
{
    Morvane::Ellipse e;
    e.SetMinRadius(minRadius);
    e.SetMaxRadius(maxRadius);
    e.SetRotation(rotation);
    return e;
}

inline Morvane::PointOfInterestLocation pointLocation(double longitude, double latitude)
{
    Morvane::PointOfInterestLocation l;
    l.SetLongitude(longitude);
    l.SetLatitude(latitude);
    return l;
}

// A point with the radius branch (choice 0).
inline Morvane::PointOfInterest radiusPoint()
{
    Morvane::PointOfInterest p;
    p.SetDisplayName(QString::fromUtf8("Hafen S\xc3\xbc\x64"));
    p.SetLocation(pointLocation(16.373819, 48.208174));
    p.SetRadius(2500.0);
    return p;
}

// A point with the ellipse branch (choice 1), at the corner of both ranges.
inline Morvane::PointOfInterest ellipsePoint()
{
    Morvane::PointOfInterest p;
    p.SetLocation(pointLocation(-180.0, 90.0));
    p.SetEllipse(ellipse());
    return p;
}

inline Morvane::Profile_Data profileData()
{
    Morvane::Profile_Data p;
    p.SetSignalClass(QStringLiteral("Voice"));
    p.SetProfileID(QStringLiteral("P-0042"));
    p.SetTransmissionSystem(QStringLiteral("TETRA"));
    p.SetProfileName(QStringLiteral("Harbour radio"));
    p.SetLocalObjectName(QStringLiteral("Pier 3"));
    p.SetPriority(QStringLiteral("high"));
    p.SetThreatClass(QLatin1String(""));
    p.AppendPointOfInterest(radiusPoint());
    p.AppendPointOfInterest(ellipsePoint());
    return p;
}

inline Morvane::DFDataDetail dfDataDetail()
{
    Morvane::DFDataDetail d;
    d.SetAntenna(QStringLiteral("ADD-197"));
    d.SetElevation(12.5);
    d.SetElevationVar(0.75);
    d.SetCompass(359.99);
    d.SetStdDeviation(1.25);
    return d;
}

inline Morvane::Burst burst(double azimuth = 271.25)
{
    Morvane::Burst b;
    b.SetFrequency(frequency());
    b.SetBandwidth(bandwidth());
    b.SetQuality(87.5);
    b.SetAzimuth(azimuth);
    b.SetAzimuthVar(1.5);
    b.SetElevation(4.25);
    b.SetElevationVar(0.5);
    b.SetLevel(-61.75);
    b.SetStartTime(utc(2026, 11, 23, 8, 30, 0, 125));
    b.SetStopTime(utc(2026, 11, 23, 8, 30, 0, 900));
    return b;
}

inline Morvane::Bursts bursts()
{
    Morvane::Bursts b;
    b.SetCount(2);
    b.AppendBurst(burst());
    b.AppendBurst(burst(-12.5));
    return b;
}

inline Morvane::Emission emission()
{
    Morvane::Emission e;
    e.SetAzimuth(271.5);
    e.SetAzimuthVar(2.25);
    e.SetElevation(3.5);
    e.SetElevationVar(0.25);
    e.SetLevel(-64.5);
    e.SetStartTime(utc(2026, 11, 23, 8, 30, 0, 0));
    e.SetStopTime(utc(2026, 11, 23, 8, 31, 0, 0));
    e.SetBursts(bursts());
    return e;
}

inline Morvane::Plot_Info plotInfo()
{
    Morvane::Emissions emissions;
    emissions.SetCount(1);
    emissions.AppendEmission(emission());
    Morvane::Plot_Info p;
    p.SetKVF_CL_ID(-7);
    p.SetEmissions(emissions);
    return p;
}

inline Morvane::DFData dfData()
{
    Morvane::DFData d;
    d.SetQuality(91.25);
    d.SetFrequency(frequency());
    d.SetAzimuth(123.45);
    d.SetLevel(-70.5);
    d.SetDetail(dfDataDetail());
    d.SetPlot_Info(plotInfo());
    return d;
}

inline Morvane::Station station(int id = 17, const QString &name = QStringLiteral("Kahlenberg"))
{
    Morvane::Station s;
    s.SetStationID(id);
    s.SetOWNStation(true);
    s.SetTimeStamp(utc(2026, 11, 23, 8, 29, 59, 500));
    s.SetLongitude(16.333333);
    s.SetLatitude(48.276111);
    s.SetName(name);
    s.SetDFData(dfData());
    s.SetPositionSource(QStringLiteral("GPS"));
    return s;
}

inline Morvane::Value frequencyValue(double value, const QDateTime &time)
{
    Morvane::Value v;
    v.SetFrequency(valueRecord<Morvane::Frequency>(value));
    if (time.isValid())
        v.SetTimeStamp(time);
    return v;
}

inline Morvane::PlotDetail plotDetail()
{
    Morvane::PlotDetail d;
    d.SetComment(QStringLiteral("hopping over three channels"));
    d.SetAnalogDemod(Morvane::PlotDetail::AnalogDemod_F3E);
    return d;
}

// A plot with the ellipse branch; plotWithRadius() has the radius branch.
inline Morvane::Plot plot()
{
    Morvane::Plot p;
    p.SetName(QStringLiteral("Hopper 1"));
    p.SetSignal_ID(4711);
    p.SetEmitter_ID(-3);
    p.SetBandwidth(bandwidth());
    p.SetType(Morvane::Plot::Type_Hopper);
    p.SetEllipse(ellipse(10.0, 20.0, 45.0));
    p.SetStartTime(utc(2026, 11, 23, 8, 0, 0, 0));
    p.SetStopTime(utc(2026, 11, 23, 9, 0, 0, 1));
    Morvane::FrequencyList list;
    list.AppendValue(frequencyValue(145525000.0, utc(2026, 11, 23, 8, 0, 0, 0)));
    list.AppendValue(frequencyValue(145550000.0, QDateTime()));
    p.SetFrequencyList(list);
    p.SetDetail(plotDetail());
    return p;
}

inline Morvane::Plot plotWithRadius()
{
    Morvane::Plot p = plot();
    p.SetRadius(750.25);
    return p;
}

inline Morvane::LocationResultDetail locationResultDetail()
{
    Morvane::LocationResultDetail d;
    d.SetFrequency(frequency());
    return d;
}

inline Morvane::LocationResult locationResult()
{
    Morvane::LocationResult r;
    r.SetTimeStamp(utc(2026, 11, 23, 8, 31, 5, 250));
    r.SetDFBandwidth(25000.0);
    Morvane::LocationResultLocation where;
    where.SetLongitude(16.41);
    where.SetLatitude(-90.0);
    r.SetLocation(where);
    r.SetDetail(locationResultDetail());
    r.SetPlot(plot());
    r.AppendStation(station(3, QStringLiteral("Bisamberg")));
    r.AppendStation(station(4, QStringLiteral("Laaer Berg")));
    return r;
}

inline Morvane::FrequencyStoreEntryLocation entryLocation()
{
    Morvane::FrequencyStoreEntryLocation l;
    l.AppendStation(station(1, QStringLiteral("Kahlenberg")));
    l.AppendStation(station(2, QStringLiteral("Leopoldsberg")));
    l.AppendLocationResult(locationResult());
    return l;
}

inline Morvane::Detection detection()
{
    Morvane::Detection d;
    d.SetStartTime(utc(2026, 11, 23, 8, 30, 0, 0));
    d.SetStopTime(utc(2026, 11, 23, 8, 45, 30, 999));
    return d;
}

inline Morvane::ResultList resultList()
{
    Morvane::ResultList r;
    r.SetReason(QStringLiteral("matched profile P-0042"));
    r.SetResultTime(utc(2026, 11, 23, 8, 46, 0, 0));
    r.SetConfidence(93);
    return r;
}

} // namespace samples

#endif
