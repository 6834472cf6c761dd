// Builds target areas with the installed (or build-tree) library, writes them
// as XML and reads them back. Exit code 0 only when everything read back is
// what was written.

#include <morvane.h>

#include <QtCore/QtGlobal>

#include <cstdio>

#if defined(MORVANE_EXPECTED_QT_MAJOR)
static_assert(QT_VERSION_MAJOR == MORVANE_EXPECTED_QT_MAJOR, "built against the wrong Qt major");
#endif

using namespace Morvane;

static int failures = 0;

static void expect(bool ok, const char *what)
{
    if (!ok) {
        std::fprintf(stderr, "FAILED: %s\n", what);
        ++failures;
    }
}

int main()
{
    Coordinate a;
    a.SetLongitude(16.18);
    a.SetLatitude(48.12);
    Coordinate b;
    b.SetLongitude(16.58);
    b.SetLatitude(48.32);
    Coordinate c;
    c.SetLongitude(-3.5);
    c.SetLatitude(-12.25);

    Area area;
    area.SetName(QStringLiteral("Consumer area"));
    area.AppendCoordinate(a);
    area.AppendCoordinate(b);
    area.AppendCoordinate(c);
    Targetareas areas;
    areas.AppendArea(area);

    const QString xml = areas.GetXmlString();
    std::printf("%s\n", xml.toUtf8().constData());
    expect(xml.contains(QStringLiteral("Consumer area")), "the XML holds the area's name");

    Targetareas back;
    expect(back.SetXmlString(xml), "SetXmlString accepts the written XML");
    expect(back == areas, "the read-back target areas equal the written ones");
    expect(back.GetArea().size() == 1, "one area read back");
    if (back.GetArea().size() == 1) {
        const Area &read = back.GetArea().at(0);
        expect(read.GetName() == QStringLiteral("Consumer area"), "the area's name read back");
        expect(read.GetCoordinate().size() == 3, "three coordinates read back");
        if (read.GetCoordinate().size() == 3) {
            expect(read.GetCoordinate().at(2).GetLongitude() == -3.5, "longitude read back");
            expect(read.GetCoordinate().at(2).GetLatitude() == -12.25, "latitude read back");
        }
    }
    expect(back.GetXmlString() == xml, "writing the read-back areas gives the same XML");

    // An exception thrown in the library is caught here by its type.
    bool thrown = false;
    try {
        Coordinate bad;
        bad.SetLatitude(91.0);
    } catch (const ORBELIN::OutOfRangeException &) {
        thrown = true;
    }
    expect(thrown, "an out-of-range latitude throws ORBELIN::OutOfRangeException");

    std::printf("%s\n", failures == 0 ? "consumer: OK" : "consumer: FAILED");
    return failures == 0 ? 0 : 1;
}
