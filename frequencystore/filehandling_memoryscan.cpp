// The memory scan file: receiver, detail and direction-finding settings, with
// a header that loses the columns the entries lack.
//
// Full header "Type;Comment;Antenna;Frequency;IFBandwidth;AnalogDemod;Active;
// AFC;Attenuation;SquelchState;SquelchValue;ChannelNo;Alarm;DFSquelchMode;
// DFMeasurementTime;DFSquelch;DFBandwidth;DFStep;FreqSpan". The names are the
// file's own: FreqSpan is the IFStep of FFM_Settings (not the FreqSpan of
// DF_Settings), DFSquelchMode is DFMode, DFMeasurementTime is Averaging and
// DFSquelch is the LevelThreshold of the DF detail.
//
// Writing, entry by entry: the twelve cells Type to ChannelNo, each with its
// ";". Then the Alarm cell if the entry's alarm is set; if not, the first
// ";Alarm" of the text so far loses its six characters. Then the four DF
// cells if the entry has DF_Settings, and DFStep and FreqSpan if it has a
// DFStep, the last ";" taken away; without a DFStep the last ";" goes and so
// does the first ";DFStep;FreqSpan" of the text; without DF_Settings the last
// ";" goes and so does the first DF block of the text. Then a line feed.
//
// The header thus follows the first entry that lacks a column, while each row
// keeps what its entry has; the file is well formed only if the entries
// agree, and a file of mixed entries does not import again. The searches run
// over the whole text, the rows included, and the position of the alarm
// search is not tested: when no ";Alarm" is left, Qt counts the position -1
// from the end, and the last character of the text (the ";" behind
// ChannelNo) goes. This is the format the programs that read memory scan
// files expect, and it stays so.
//
// Reading looks the columns up by name; a column that is not there is left
// alone in all rows, which is how every header variant reads.

#include "frequencystore/filehandling_p.h"

#include "frame/exceptions.h"

#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <set>
#include <utility>

namespace Morvane {

using namespace filehandling;

namespace {

const QString &trueText()
{
    static const QString text = QStringLiteral("true");
    return text;
}

const QString &falseText()
{
    static const QString text = QStringLiteral("false");
    return text;
}

// The text of a memory scan file while it is built.
//
// The steps of the format search the whole text from its start for the first
// ";Alarm", ";DFStep;FreqSpan" or DF block, once per entry. Done on one
// string, every search and every removal near the header would walk the
// whole text, which makes a list of 100,000 entries quadratic. The text is
// kept here as its lines instead (the header, then one line per row, the
// line feeds between them implied) with the same result, byte for byte:
//
// - No pattern holds a line feed, and no step ever removes one (a removal
//   takes a match, a chop or the position -1 takes the last character of the
//   row being written, which has at least twelve cells at that time). So a
//   match never spans two lines, and the first match of the text is the
//   first match of the first line that has one.
// - For each pattern, the lines below `scanned` are known to hold no match,
//   but for those in `dirty`, which a removal changed after they were
//   scanned. A search looks at the dirty lines, in order, then goes on from
//   `scanned`; the row being written, which still grows, is never counted as
//   scanned. So each line is scanned once per pattern, plus once more after
//   each removal in it.
// - A removal edits one line only, at the cost of that line.
class MemoryScanText
{
public:
    enum Pattern { Alarm, DFStepAndFreqSpan, DFBlock, PatternCount };

    struct Hit
    {
        int line = -1;
        int position = -1;
        bool found() const { return line >= 0; }
    };

    explicit MemoryScanText(const QString &header) { m_lines.append(header); }

    static const QString &text(Pattern pattern)
    {
        static const QString texts[PatternCount] = {
            QStringLiteral(";Alarm"),
            QStringLiteral(";DFStep;FreqSpan"),
            QStringLiteral(";DFSquelchMode;DFMeasurementTime;DFSquelch;DFBandwidth;DFStep;FreqSpan"),
        };
        return texts[pattern];
    }

    void reserve(int rows) { m_lines.reserve(rows + 1); }

    // Starts the row of the next entry: the line feed behind the last line.
    void startRow() { m_lines.append(QString()); }

    // The row being written.
    QString &row() { return m_lines.last(); }

    // Where the first match of the pattern stands in the text, as
    // QString::indexOf from the start of the text would find it.
    Hit find(Pattern pattern)
    {
        const QString &needle = text(pattern);
        std::set<int> &dirty = m_dirty[pattern];
        for (auto it = dirty.begin(); it != dirty.end();) {
            const int position = int(m_lines.at(*it).indexOf(needle));
            if (position >= 0)
                return Hit{*it, position};
            it = dirty.erase(it);
        }
        const int last = int(m_lines.size()) - 1;
        for (int line = m_scanned[pattern]; line <= last; ++line) {
            const int position = int(m_lines.at(line).indexOf(needle));
            if (position >= 0) {
                m_scanned[pattern] = line;
                return Hit{line, position};
            }
        }
        m_scanned[pattern] = last;
        return Hit{};
    }

    // QString::remove at the position of a match, for the pattern's length.
    void remove(const Hit &hit, Pattern pattern)
    {
        m_lines[hit.line].remove(hit.position, text(pattern).size());
        changed(hit.line);
    }

    // QString::remove at -1 (and QString::chop of one character): the last
    // character of the text, which is the last of the row being written.
    void removeLast()
    {
        m_lines.last().chop(1);
        changed(int(m_lines.size()) - 1);
    }

    // The whole text: each line followed by its line feed.
    QString joined() const
    {
        qsizetype size = 0;
        for (const QString &line : m_lines)
            size += line.size() + 1;
        QString out;
        out.reserve(size);
        for (const QString &line : m_lines) {
            out += line;
            out += QLatin1Char('\n');
        }
        return out;
    }

private:
    // A line below a pattern's `scanned` was changed: it has to be looked at
    // again.
    void changed(int line)
    {
        for (int pattern = 0; pattern < PatternCount; ++pattern) {
            if (line < m_scanned[pattern])
                m_dirty[pattern].insert(line);
        }
    }

    QVector<QString> m_lines;
    int m_scanned[PatternCount] = {0, 0, 0};
    std::set<int> m_dirty[PatternCount];
};

// A cell of the file, or null when the column is not there.
const CSVColumn *column(const CSVFileLoader &loader, const char *name)
{
    return loader.GetColumn(QString::fromLatin1(name));
}

// The cell of a column in a row, when the column is there and the cell is no
// "---": what is to be stored.
bool storedCell(const CSVColumn *column, int row, QStringView &cell)
{
    if (!column)
        return false;
    cell = cellView(column, row);
    return cell != emptyCell();
}

} // namespace

// --- cells -----------------------------------------------------------------------

// The reads go through the const entry, so that asking does not mark members
// as present; the entry is the export's own copy all the same.

void FileHandling::AppendAntenna(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    SetCSVItem(std::as_const(entry).GetAntenna(), line, endOfRow);
}

void FileHandling::AppendActive(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    // No test whether it is set: an unset flag reads false.
    SetCSVItem(std::as_const(entry).GetFFM_Settings().GetDetail().GetActive() ? trueText() : falseText(), line,
               endOfRow);
}

void FileHandling::AppendAFC(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    const FFM_SettingsDetail &detail = std::as_const(entry).GetFFM_Settings().GetDetail();
    SetCSVItem(detail.IsAFCSet() ? detail.AFCToName(detail.GetAFC()) : QString(), line, endOfRow);
}

void FileHandling::AppendAttenuation(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    const FFM_SettingsDetail &detail = std::as_const(entry).GetFFM_Settings().GetDetail();
    SetCSVItem(detail.IsAttenuationSet() ? detail.AttenuationToName(detail.GetAttenuation()) : QString(), line,
               endOfRow);
}

void FileHandling::AppendSquelchState(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    const FFM_SettingsDetail &detail = std::as_const(entry).GetFFM_Settings().GetDetail();
    SetCSVItem(detail.IsSquelchStateSet() ? detail.SquelchStateToName(detail.GetSquelchState()) : QString(), line,
               endOfRow);
}

void FileHandling::AppendSquelchValue(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    const FFM_SettingsDetail &detail = std::as_const(entry).GetFFM_Settings().GetDetail();
    SetCSVItem(detail.IsSquelchValueSet() ? QString::number(detail.GetSquelchValue()) : QString(), line, endOfRow);
}

void FileHandling::AppendChannelNo(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    const FFM_SettingsDetail &detail = std::as_const(entry).GetFFM_Settings().GetDetail();
    SetCSVItem(detail.IsChannelNoSet() ? QString::number(detail.GetChannelNo()) : QString(), line, endOfRow);
}

void FileHandling::AppendAlarm(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    // No test here: the memory scan export writes the cell only for an
    // entry whose alarm is set.
    SetCSVItem(std::as_const(entry).GetFFM_Settings().GetDetail().GetAlarm() ? trueText() : falseText(), line,
               endOfRow);
}

void FileHandling::AppendDFMode(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    const DF_Settings &settings = std::as_const(entry).GetDF_Settings();
    SetCSVItem(settings.IsDFModeSet() ? settings.DFModeToName(settings.GetDFMode()) : QString(), line, endOfRow);
}

// The DF numbers and the IF step are written in their shortest form, set or
// not.

void FileHandling::AppendAveraging(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    SetCSVItem(shortest(std::as_const(entry).GetDF_Settings().GetAveraging()), line, endOfRow);
}

void FileHandling::AppendLevelThreshold(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    SetCSVItem(shortest(std::as_const(entry).GetDF_Settings().GetDetail().GetLevelThreshold()), line, endOfRow);
}

void FileHandling::AppendDFBandwidth(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    SetCSVItem(shortest(std::as_const(entry).GetDF_Settings().GetBandwidth().GetValue()), line, endOfRow);
}

void FileHandling::AppendDFStep(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    SetCSVItem(shortest(std::as_const(entry).GetDF_Settings().GetDFStep()), line, endOfRow);
}

void FileHandling::AppendIFStep(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    SetCSVItem(shortest(std::as_const(entry).GetFFM_Settings().GetIFStep()), line, endOfRow);
}

// --- the file ----------------------------------------------------------------------

void FileHandling::ExportMemoryScan(const QString &fileName, FrequencyStoreListHelper &helper)
{
    MemoryScanText text(QStringLiteral("Type;Comment;Antenna;Frequency;IFBandwidth;AnalogDemod;Active;AFC;Attenuation;"
                                       "SquelchState;SquelchValue;ChannelNo;Alarm;DFSquelchMode;DFMeasurementTime;"
                                       "DFSquelch;DFBandwidth;DFStep;FreqSpan"));
    text.reserve(int(listedEntries(helper).size()));
    forEachExportedEntry(helper, [&](FrequencyStoreEntry &entry) {
        text.startRow();
        QString &row = text.row();
        AppendType(entry, row, false);
        AppendComment(entry, row, false);
        AppendAntenna(entry, row, false);
        AppendFrequency(entry, row, false);
        AppendBandwidth(entry, row, false);
        AppendAnalogDemod(entry, row, false);
        AppendActive(entry, row, false);
        AppendAFC(entry, row, false);
        AppendAttenuation(entry, row, false);
        AppendSquelchState(entry, row, false);
        AppendSquelchValue(entry, row, false);
        AppendChannelNo(entry, row, false);

        if (std::as_const(entry).GetFFM_Settings().GetDetail().IsAlarmSet()) {
            AppendAlarm(entry, text.row(), false);
        } else {
            // The position is not tested: with no ";Alarm" left it is -1,
            // and QString::remove(-1, 6) takes the last character.
            const MemoryScanText::Hit hit = text.find(MemoryScanText::Alarm);
            if (hit.found())
                text.remove(hit, MemoryScanText::Alarm);
            else
                text.removeLast();
        }

        if (std::as_const(entry).IsDF_SettingsSet()) {
            AppendDFMode(entry, text.row(), false);
            AppendAveraging(entry, text.row(), false);
            AppendLevelThreshold(entry, text.row(), false);
            AppendDFBandwidth(entry, text.row(), false);
            if (std::as_const(entry).GetDF_Settings().IsDFStepSet()) {
                AppendDFStep(entry, text.row(), false);
                AppendIFStep(entry, text.row(), false);
                text.removeLast();
            } else {
                text.removeLast();
                // The second search of these steps starts at index 1; the
                // text starts with the "Type;" of the header, which no step
                // removes, so it finds the same match as the first.
                const MemoryScanText::Hit hit = text.find(MemoryScanText::DFStepAndFreqSpan);
                if (hit.found())
                    text.remove(hit, MemoryScanText::DFStepAndFreqSpan);
            }
        } else {
            text.removeLast();
            const MemoryScanText::Hit hit = text.find(MemoryScanText::DFBlock);
            if (hit.found())
                text.remove(hit, MemoryScanText::DFBlock);
        }
    });
    WriteToFile(fileName, text.joined());
}

// Every cell but Type, Frequency and IFBandwidth is skipped when it is "---",
// and a skipped cell touches nothing: a row whose DF cells are all "---" has
// no DF_Settings, one whose receiver cells are all "---" gets FFM_Settings
// only from Frequency and IFBandwidth. A cell that is stored makes its record
// present first: a receiver cell FFM_Settings, selected as the entry's
// choice (and its Detail for the detail cells), a DF cell DF_Settings.
//
// The rows are counted by the Type column, as in the other list files: a
// file without it is refused as a whole.
void FileHandling::ImportMemoryScan(const QString &fileName, FrequencyStoreList &list)
{
    CSVFileLoader loader;
    loader.LoadFile(fileName);

    const CSVColumn *type = column(loader, "Type");
    const CSVColumn *comment = column(loader, "Comment");
    const CSVColumn *frequency = column(loader, "Frequency");
    const CSVColumn *bandwidth = column(loader, "IFBandwidth");
    const CSVColumn *analogDemod = column(loader, "AnalogDemod");
    const CSVColumn *active = column(loader, "Active");
    const CSVColumn *afc = column(loader, "AFC");
    const CSVColumn *attenuation = column(loader, "Attenuation");
    const CSVColumn *squelchState = column(loader, "SquelchState");
    const CSVColumn *squelchValue = column(loader, "SquelchValue");
    const CSVColumn *antenna = column(loader, "Antenna");
    const CSVColumn *channelNo = column(loader, "ChannelNo");
    const CSVColumn *alarm = column(loader, "Alarm");
    const CSVColumn *dfMode = column(loader, "DFSquelchMode");
    const CSVColumn *averaging = column(loader, "DFMeasurementTime");
    const CSVColumn *levelThreshold = column(loader, "DFSquelch");
    const CSVColumn *dfBandwidth = column(loader, "DFBandwidth");
    const CSVColumn *ifStep = column(loader, "FreqSpan");
    const CSVColumn *dfStep = column(loader, "DFStep");
    const int rows = rowsByType(type);
    const bool validate = list.GetValidate();
    QStringView cell;
    for (int row = 0; row < rows; ++row) {
        FrequencyStoreEntry entry;
        entry.SetValidate(validate);

        // "---" is a type like any other here.
        entry.SetType(typeOf(type, row));

        if (storedCell(comment, row, cell))
            entry.SetComment(cellText(cell));
        if (storedCell(antenna, row, cell))
            entry.SetAntenna(cellText(cell));
        // The two values are no placeholders: "---" reads as 0, stored.
        if (frequency)
            storeValue(entry.GetFFM_Settings().GetFrequency(), number(cellView(frequency, row)));
        if (bandwidth)
            storeValue(entry.GetFFM_Settings().GetIFBandwidth(), number(cellView(bandwidth, row)));
        if (storedCell(analogDemod, row, cell)) {
            FFM_Settings &settings = entry.GetFFM_Settings();
            settings.SetAnalogDemod(settings.NameToAnalogDemod(cellText(cell)));
        }
        // The flags compare exactly: "True" is false.
        if (storedCell(active, row, cell))
            entry.GetFFM_Settings().GetDetail().SetActive(cell == trueText());
        if (storedCell(afc, row, cell)) {
            FFM_SettingsDetail &detail = entry.GetFFM_Settings().GetDetail();
            detail.SetAFC(detail.NameToAFC(cellText(cell)));
        }
        if (storedCell(attenuation, row, cell)) {
            FFM_SettingsDetail &detail = entry.GetFFM_Settings().GetDetail();
            detail.SetAttenuation(detail.NameToAttenuation(cellText(cell)));
        }
        if (storedCell(squelchState, row, cell)) {
            FFM_SettingsDetail &detail = entry.GetFFM_Settings().GetDetail();
            detail.SetSquelchState(detail.NameToSquelchState(cellText(cell)));
        }
        // An unreadable number reads as 0.
        if (storedCell(squelchValue, row, cell))
            entry.GetFFM_Settings().GetDetail().SetSquelchValue(cell.toInt(nullptr, 10));
        if (storedCell(channelNo, row, cell))
            entry.GetFFM_Settings().GetDetail().SetChannelNo(cell.toInt(nullptr, 10));
        if (storedCell(alarm, row, cell))
            entry.GetFFM_Settings().GetDetail().SetAlarm(cell == trueText());
        if (storedCell(dfMode, row, cell)) {
            DF_Settings &settings = entry.GetDF_Settings();
            settings.SetDFMode(settings.NameToDFMode(cellText(cell)));
        }
        if (storedCell(averaging, row, cell))
            entry.GetDF_Settings().SetAveraging(number(cell));
        if (storedCell(levelThreshold, row, cell)) {
            const double value = number(cell);
            pastSetter(entry.GetDF_Settings().GetDetail(),
                       [value](DF_SettingsDetail &detail) { detail.SetLevelThreshold(value); });
        }
        if (storedCell(dfBandwidth, row, cell))
            storeValue(entry.GetDF_Settings().GetBandwidth(), number(cell));
        if (storedCell(dfStep, row, cell))
            entry.GetDF_Settings().SetDFStep(number(cell));
        if (storedCell(ifStep, row, cell))
            entry.GetFFM_Settings().SetIFStep(number(cell));

        // The file has no quality threshold: an entry with DF settings gets
        // 0, whichever DF cells it had.
        if (std::as_const(entry).IsDF_SettingsSet())
            entry.GetDF_Settings().GetDetail().SetQualityThreshold(0);

        entry.Check(false);
        list.AppendFrequencyStoreEntry(std::move(entry));
    }
}

} // namespace Morvane
