#ifndef MORVANE_FILEHANDLING_P_H
#define MORVANE_FILEHANDLING_P_H

// What the list files of FileHandling share: the trace, the text of an empty
// cell, the number forms, the cells of a loaded file and the import of the
// columns every list file has. Private to the library.

#include "frame/converters.h"
#include "frame/exceptions.h"
#include "frame/trace.h"
#include "frequencystore/csvcolumn.h"
#include "frequencystore/csvfileloader.h"
#include "frequencystore/csvtable_p.h"
#include "frequencystore/filehandling.h"

#include <QtCore/QString>

#include <algorithm>
#include <functional>

namespace Morvane {
namespace filehandling {

// The source path the file handling gives to the trace.
inline const QString &sourcePath()
{
    static const QString path = QStringLiteral("frequencystore/filehandling");
    return path;
}

// Traces text with the source path and the line of the call, when the trace
// mask has ErrorHandler::TraceErrors set.
inline void trace(const QString &source, const QString &text, int line)
{
    if (ErrorHandler::Instance()->GetTraceMask() & ErrorHandler::TraceErrors)
        _Q_Trace(source, text, static_cast<unsigned short>(line));
}

// Every trace call stands on one line, so that the line traced is the call's.
#define FILEHANDLING_TRACE(text) ::Morvane::filehandling::trace(::Morvane::filehandling::sourcePath(), (text), __LINE__)

// The text of an empty cell.
inline const QString &emptyCell()
{
    static const QString text = QStringLiteral("---");
    return text;
}

// A number in fixed notation with the given decimals, no grouping: what
// QString::arg(value, 0, 'f', decimals) writes, without parsing a pattern.
inline QString fixed(double value, int decimals)
{
    return QString::number(value, 'f', decimals);
}

// A number as the files write most numbers: fixed, two decimals.
inline QString fixed2(double value)
{
    return fixed(value, 2);
}

// A number in format 'g' with precision -1, which QString::arg takes as six
// significant digits: 1234567 is written "1.23457e+06".
inline QString shortest(double value)
{
    return QStringLiteral("%1").arg(value, 0, 'g', -1);
}

// The cell of a column in a row, read in place; an empty view when there is
// no column or no such row.
inline QStringView cellView(const CSVColumn *column, int row)
{
    if (!column || row < 0 || row >= detail::CSVCells::count(*column))
        return QStringView();
    return detail::CSVCells::at(*column, row);
}

// A cell as a string of its own. A cell is a text, never the null string: an
// empty cell is an empty text, which the string setters take.
inline QString cellText(QStringView cell)
{
    return cell.isEmpty() ? QStringLiteral("") : cell.toString();
}

// The cell of a column in a row as a string of its own.
inline QString cellAt(const CSVColumn *column, int row)
{
    return cellText(cellView(column, row));
}

// Called once the first row of a text of `rows` rows is written, from
// `start` on: reserves what the rows will take, judged by the first (with a
// quarter more, and at most 256 characters a row). A text that only grows
// copies itself into fresh memory each time its capacity runs out, and for
// a long list those copies cost more than the rows. The capacity left over
// stays with the text: squeezing it would copy the text once more.
inline void reserveRows(QString &text, qsizetype start, qsizetype rows)
{
    const qsizetype row = std::min<qsizetype>(text.size() - start, 256);
    text.reserve(text.size() + row * (rows - 1) * 5 / 4);
}

// A cell as a number, read as QString::toDouble reads it (0 for what is no
// number).
inline double number(QStringView cell)
{
    return ORBELIN::Converters::ToDouble(cell);
}

// The number of rows of a loaded file, counted by its Type column: a file
// without one is refused, so that it does not pass for a list of no rows.
inline int rowsByType(const CSVColumn *type)
{
    if (!type)
        throw ORBELIN::OrbelinException(QStringLiteral("Data is corrupted. The column 'Type' is missing!"));
    return detail::CSVCells::count(*type);
}

// The Type cell of a row; an empty one is refused.
inline QString typeOf(const CSVColumn *type, int row)
{
    const QString text = cellAt(type, row);
    if (text.isEmpty())
        throw ORBELIN::OrbelinException(QStringLiteral("Data is corrupted. 'Type' is not allowed to be empty!"));
    return text;
}

// Stores a value into a member past its setter's test: the setter runs with
// the record's validation switched off, and the flag is put back afterwards.
// Meant for records without children (value records, details), whose own
// flag is all there is to switch.
template <class R, class F>
void pastSetter(R &record, F set)
{
    const bool validate = record.GetValidate();
    record.SetValidate(false);
    set(record);
    record.SetValidate(validate);
}

// Stores a number into the Value of a value record (Frequency, IFBandwidth)
// with its presence bit, past the setter's test.
template <class ValueRecord>
void storeValue(ValueRecord &record, double value)
{
    pastSetter(record, [value](ValueRecord &r) { r.SetValue(value); });
}

// The cells of a list type beyond the common columns, put into the entry of
// a row after the common ones.
using RowFiller = std::function<void(FrequencyStoreEntry &entry, int row)>;

// Reads the whole file, then makes one entry for each row, fills it from the
// columns Type, Comment, Frequency and IFBandwidth (and AnalogDemod when
// analogDemod is true), then through the filler that extraColumns gives for
// the loaded file (when there is one), and appends it to the list after
// Check(false). Throws for the file and for the first row that fails; the
// entries of the rows ahead of it stay in the list.
void importRows(const QString &fileName, FrequencyStoreList &list, bool analogDemod,
                const std::function<RowFiller(const CSVFileLoader &)> &extraColumns = {});

// The entries of the helper's list, in list order.
const QVector<FrequencyStoreEntry> &listedEntries(FrequencyStoreListHelper &helper);

// Calls f with a copy of each entry of the helper's list (with its
// validation flag), in list order: the exports work on these copies, so that
// the getters that mark members as present change only the copies. One copy
// lives at a time, so that an export of a long list does not hold a second
// list in memory.
template <class F>
void forEachExportedEntry(FrequencyStoreListHelper &helper, F f)
{
    for (const FrequencyStoreEntry &source : listedEntries(helper)) {
        FrequencyStoreEntry entry(source);
        f(entry);
    }
}

} // namespace filehandling
} // namespace Morvane

#endif
