// Builds a tree of target areas and value records, writes it as XML and as
// binary, reads both back and prints what it read.

#include <morvane.h>

#include <QtCore/QTextStream>

#include <cstdio>

using namespace Morvane;

static Coordinate coordinate(double longitude, double latitude)
{
    Coordinate c;
    c.SetLongitude(longitude);
    c.SetLatitude(latitude);
    return c;
}

int main()
{
    QTextStream out(stdout);

    Area vienna;
    vienna.SetName(QStringLiteral("Vienna"));
    vienna.AppendCoordinate(coordinate(16.18, 48.12));
    vienna.AppendCoordinate(coordinate(16.58, 48.12));
    vienna.AppendCoordinate(coordinate(16.58, 48.32));
    vienna.AppendCoordinate(coordinate(16.18, 48.32));
    Area coast;
    coast.SetName(QStringLiteral("Adriatic coast"));
    coast.SetScriptID(QStringLiteral("coast-7"));
    coast.AppendCoordinate(coordinate(13.5, 45.2));
    coast.AppendCoordinate(coordinate(14.1, 45.9));
    coast.AppendCoordinate(coordinate(15.0, 44.6));
    Targetareas areas;
    areas.AppendArea(vienna);
    areas.AppendArea(coast);

    Frequency frequency;
    frequency.SetValue(145525000.0);
    frequency.SetMin(145500000.0);
    frequency.SetMax(145550000.0);
    Bandwidth bandwidth;
    bandwidth.SetValue(12500.0);
    bandwidth.SetUse(false);
    SignalLength length;
    length.SetMin(0.02);
    length.SetMax(1.5);

    const QString xml = areas.GetXmlString();
    QByteArray binary = areas.GetBinaryRepresentationAsQByteArray();
    out << "Targetareas as XML:\n" << xml << "\n";
    out << "Targetareas as binary: " << binary.size() << " bytes\n";

    Targetareas fromXml;
    Targetareas fromBinary;
    const bool xmlRead = fromXml.SetXmlString(xml);
    const bool binaryRead = fromBinary.SetBinaryRepresentation(binary);
    out << "read back from XML: " << (xmlRead && fromXml == areas ? "equal" : "DIFFERENT") << "\n";
    out << "read back from binary: " << (binaryRead && fromBinary == areas ? "equal" : "DIFFERENT") << "\n";
    for (const Area &area : fromBinary.GetArea()) {
        out << "  area " << area.GetName() << " with " << area.GetCoordinate().size() << " corners";
        if (area.IsScriptIDSet())
            out << ", script " << area.GetScriptID();
        out << "\n";
        for (const Coordinate &c : area.GetCoordinate())
            out << "    " << c.GetLongitude() << " / " << c.GetLatitude() << "\n";
    }

    bool valuesOk = true;
    for (Record *value : std::initializer_list<Record *>{&frequency, &bandwidth, &length}) {
        out << value->GetXmlString();
        QByteArray bytes = value->GetBinaryRepresentationAsQByteArray();
        valuesOk = valuesOk && !bytes.isEmpty();
    }
    Frequency frequencyBack;
    Bandwidth bandwidthBack;
    SignalLength lengthBack;
    QByteArray f = frequency.GetBinaryRepresentationAsQByteArray();
    QByteArray b = bandwidth.GetBinaryRepresentationAsQByteArray();
    QByteArray l = length.GetBinaryRepresentationAsQByteArray();
    valuesOk = valuesOk && frequencyBack.SetBinaryRepresentation(f) && frequencyBack == frequency
        && bandwidthBack.SetXmlString(bandwidth.GetXmlString()) && bandwidthBack == bandwidth
        && lengthBack.SetBinaryRepresentation(l) && lengthBack == length;
    out << "value records read back: " << (valuesOk ? "equal" : "DIFFERENT") << "\n";
    out.flush();
    return xmlRead && binaryRead && fromXml == areas && fromBinary == areas && valuesOk ? 0 : 1;
}
