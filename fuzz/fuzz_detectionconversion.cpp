// Feeds arbitrary bytes to the readers of a DetectionResultList, as binary and
// as XML text, with validation on and off, and converts what the list then
// holds into a FrequencyStoreList (DetectionResultHelper) and into the CSV
// text of the results. A failed read must keep what the list held; the
// conversion may fail with an exception of the OrbelinException family (a
// result its setters or appends refuse), with nothing else; nothing may
// crash. (The corpus: fuzz/corpus/detectionconversion/.)

#include "fuzztarget.h"

#include <morvane.h>

#include <utility>

namespace {

const Morvane::DetectionResultList &reference()
{
    static const Morvane::DetectionResultList list = [] {
        Morvane::DetectionResultList l;
        l.SetUsage(Morvane::DetectionResultList::Usage_Resultlist);
        l.SetComment(QStringLiteral("reference"));
        l.SetID(QStringLiteral("ref"));
        l.SetType(QStringLiteral("Scan"));
        Morvane::DetectionResult r;
        r.SetID(QStringLiteral("r1"));
        r.SetType(QStringLiteral("Burst"));
        Morvane::Frequency f;
        f.SetValue(7000000.0);
        r.SetFrequency(f);
        Morvane::Bandwidth b;
        b.SetValue(3000.0);
        r.SetBandwidth(b);
        r.SetModulation(QStringLiteral("ASK2"));
        l.AppendDetectionResult(r);
        return l;
    }();
    return list;
}

const QString &csvHeader()
{
    static const QString header = QStringLiteral(
        "ID;Frequency;Bandwidth;Level;StartTime;StopTime;Confidence;Modulation;TransmissionSystem;Baudrate;Shift;"
        "Decoders;Azimuth;Quality;Longitude;Latitude\n");
    return header;
}

// The list as bytes, written without validation: a comparison that holds
// for a list with NaN in it too.
QByteArray snapshot(const Morvane::DetectionResultList &results)
{
    const Morvane::DetectionResultList copy = results;
    copy.SetValidate(false);
    return copy.GetBinaryRepresentationAsQByteArray();
}

void convert(Morvane::DetectionResultList &results, bool validate)
{
    using fuzztarget::require;
    const QByteArray before = snapshot(results);
    Morvane::FrequencyStoreList list;
    list.SetValidate(validate);
    try {
        const Morvane::DetectionResultHelper helper(results, list);
        const QString csv = helper.GetCSVString();
        require(csv.startsWith(csvHeader()), "the CSV text does not start with its header");
        require(csv.endsWith(QLatin1Char('\n')), "the CSV text does not end with a line end");
        // The leading entry may be refused; every result gave one entry.
        const int converted = int(list.GetFrequencyStoreEntry().size());
        const int count = int(std::as_const(results).GetDetectionResult().size());
        require(converted == count || converted == count + 1, "the conversion lost or added entries");
        // The converted list as it would be written; its Check may refuse it.
        list.GetXmlString();
    } catch (const ORBELIN::OrbelinException &) {
        // A result the conversion refuses, or a list the writer refuses.
    }
    require(snapshot(results) == before, "the conversion changed the detection results");
}

} // namespace

void fuzzOne(const QByteArray &input)
{
    using fuzztarget::require;
    for (const bool validate : {true, false}) {
        {
            Morvane::DetectionResultList results = reference();
            results.SetValidate(validate);
            QByteArray bytes = input;
            if (!results.SetBinaryRepresentation(bytes))
                require(results == reference(), "a failed binary read changed the list");
            convert(results, validate);
        }
        {
            Morvane::DetectionResultList results = reference();
            results.SetValidate(validate);
            if (!results.SetXmlString(QString::fromUtf8(input)))
                require(results == reference(), "a failed XML read changed the list");
            convert(results, validate);
        }
    }
}
