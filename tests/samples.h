#ifndef MORVANE_TESTS_SAMPLES_H
#define MORVANE_TESTS_SAMPLES_H

// The sample records the tests build, write and read. The golden files under
// tests/data were written from exactly these samples; a change here needs new
// golden files.

#include <morvane.h>

#include <QtCore/QDateTime>

#include <initializer_list>
#include <utility>

namespace samples {

// A time to the millisecond, in UTC.
inline QDateTime utc(int y, int mo, int d, int h, int mi, int s, int ms)
{
    return QDateTime(QDate(y, mo, d), QTime(h, mi, s, ms), Qt::UTC);
}

// A value record (Frequency, Bandwidth, IFBandwidth, ...) with its value
// alone.
template <class Value>
Value valueRecord(double value)
{
    Value v;
    v.SetValue(value);
    return v;
}

inline Morvane::Coordinate coordinate(double longitude, double latitude)
{
    Morvane::Coordinate c;
    c.SetLongitude(longitude);
    c.SetLatitude(latitude);
    return c;
}

inline Morvane::Area area(const QString &name, std::initializer_list<std::pair<double, double>> corners,
                          const QString &scriptId = QString())
{
    Morvane::Area a;
    a.SetName(name);
    for (const auto &corner : corners)
        a.AppendCoordinate(coordinate(corner.first, corner.second));
    if (!scriptId.isNull())
        a.SetScriptID(scriptId);
    return a;
}

// Three areas: a polygon with a non-ASCII name and a script id, one that
// touches the bounds of both ranges and has an empty (set) script id, and a
// single corner with the smallest steps the text form keeps.
inline Morvane::Targetareas targetareas()
{
    Morvane::Targetareas t;
    t.AppendArea(area(QString::fromUtf8("Wien \xe2\x80\x93 S\xc3\xbc\x64"),
                      {{16.18, 48.12}, {16.58, 48.12}, {16.58, 48.32}, {16.18, 48.32}},
                      QStringLiteral("vienna-1")));
    t.AppendArea(area(QStringLiteral("Bounds"), {{-180.0, -90.0}, {180.0, 90.0}, {13.5, 45.2}},
                      QLatin1String("")));
    t.AppendArea(area(QStringLiteral("Single"), {{0.000001, -0.000001}}));
    return t;
}

// A second tree, different from targetareas(), to start reads from.
inline Morvane::Targetareas otherTargetareas()
{
    Morvane::Targetareas t;
    t.AppendArea(area(QStringLiteral("Graz"), {{15.43, 47.07}, {15.45, 47.08}}, QStringLiteral("graz")));
    return t;
}

inline Morvane::Frequency frequency()
{
    Morvane::Frequency f;
    f.SetValue(145525000.0);
    f.SetMin(145500000.0);
    f.SetMax(145550000.25);
    f.SetUse(false);
    return f;
}

inline Morvane::Bandwidth bandwidth()
{
    Morvane::Bandwidth b;
    b.SetValue(12500.5);
    b.SetUse(true);
    return b;
}

inline Morvane::Baudrate baudrate()
{
    Morvane::Baudrate b;
    b.SetValue(1200.0);
    b.SetMin(-50.75);
    return b;
}

inline Morvane::Shift shift()
{
    Morvane::Shift s;
    s.SetValue(850.0);
    s.SetMax(1000.0);
    s.SetUse(false);
    return s;
}

inline Morvane::IFBandwidth ifBandwidth()
{
    Morvane::IFBandwidth b;
    b.SetValue(9000.0);
    b.SetMin(8000.0);
    b.SetMax(10000.0);
    return b;
}

inline Morvane::SignalLength signalLength()
{
    Morvane::SignalLength s;
    s.SetMin(0.02);
    s.SetMax(1.5);
    s.SetUse(false);
    return s;
}

} // namespace samples

#endif
