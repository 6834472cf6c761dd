// Feeds arbitrary bytes to CSVFileLoader, as a file and as a text stream over
// a buffer opened the same way. Whatever the bytes:
// - nothing but ORBELIN::OrbelinException leaves LoadFile, and its message is
//   the one the text calls for: "<name> is empty!" when no header comes
//   before the first empty line or the end, "Data is corrupt!. It can't be
//   assigned to the header!" at the first row whose field count is not the
//   header's, nothing otherwise;
// - the loader holds one column for each part of the header and, in every
//   column, one value for each row ahead of the first empty line (or ahead of
//   the refused row), after a failure too; the first column of a name is the
//   one GetColumn finds, and CheckHeader finds every name;
// - the lines are those of a second text stream over the same file; for
//   7-bit input they are also worked out from the bytes alone (every CR
//   dropped, cut at line feeds and into pieces of 10240 characters);
// - the file and the buffer read the same, a copy of the loader holds the
//   same, and a second LoadFile of the file appends a second set of the same
//   columns, which its rows then have to fill as well.
// The corpus: fuzz/corpus/csvloader/.

#include "fuzztarget.h"

#include <morvane.h>

#include <QtCore/QBuffer>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>

#include <typeinfo>
#include <vector>

namespace {

using fuzztarget::require;
using Morvane::CSVColumn;
using Morvane::CSVFileLoader;

constexpr int MaxLineLength = 10240;

const QString &corruptMessage()
{
    static const QString text = QStringLiteral("Data is corrupt!. It can't be assigned to the header!");
    return text;
}

// What a load must add to a loader that holds priorColumns columns.
struct Expected
{
    QStringList names;             // the header's parts, the new columns
    std::vector<QStringList> rows; // the rows taken, each with a cell for every column
    bool empty = false;            // no header: "<name> is empty!"
    bool corrupt = false;          // a row of the wrong field count
};

Expected expectedFrom(const QStringList &lines, int priorColumns)
{
    Expected expected;
    int i = 0;
    while (i < lines.size() && lines.at(i).startsWith(QLatin1Char('#')))
        ++i;
    if (i >= lines.size() || lines.at(i).isEmpty()) {
        expected.empty = true;
        return expected;
    }
    expected.names = lines.at(i).split(QLatin1Char(';'), Qt::KeepEmptyParts);
    const int width = priorColumns + int(expected.names.size());
    for (++i; i < lines.size() && !lines.at(i).isEmpty(); ++i) {
        const QStringList cells = lines.at(i).split(QLatin1Char(';'), Qt::KeepEmptyParts);
        if (int(cells.size()) != width) {
            expected.corrupt = true;
            break;
        }
        expected.rows.push_back(cells);
    }
    return expected;
}

// The lines a text stream set up as the loader sets up its own gives.
QStringList streamLines(QIODevice &device)
{
    QTextStream stream(&device);
    Morvane::Compat::setUtf8(stream);
    stream.setAutoDetectUnicode(true);
    QStringList lines;
    for (;;) {
        const QString line = stream.readLine(MaxLineLength);
        if (line.isNull())
            break;
        lines.append(line);
    }
    return lines;
}

// The lines of 7-bit bytes, from the bytes alone.
QStringList asciiLines(QByteArray bytes)
{
    bytes.replace('\r', QByteArray());
    QStringList lines;
    int start = 0;
    while (start < bytes.size()) {
        const int end = int(bytes.indexOf('\n', start));
        QByteArray line = bytes.mid(start, end < 0 ? -1 : end - start);
        while (line.size() >= MaxLineLength) {
            lines.append(QString::fromLatin1(line.constData(), MaxLineLength));
            line = line.mid(MaxLineLength);
        }
        if (end >= 0 || !line.isEmpty())
            lines.append(QString::fromLatin1(line.constData(), int(line.size())));
        if (end < 0)
            break;
        start = end + 1;
    }
    return lines;
}

bool isAscii(const QByteArray &bytes)
{
    for (const char c : bytes) {
        if (static_cast<unsigned char>(c) >= 0x80)
            return false;
    }
    return true;
}

// Runs one load; gives the message of the failure, a null string for none.
template <class Load>
QString attempt(Load &&load)
{
    try {
        load();
    } catch (const ORBELIN::OrbelinException &e) {
        require(typeid(e) == typeid(ORBELIN::OrbelinException), "a subclass of OrbelinException was thrown");
        const QString message = e.GetMessage();
        require(!message.isNull(), "an exception without a message");
        return message;
    } catch (...) {
        require(false, "an exception other than OrbelinException left LoadFile");
    }
    return QString();
}

// Whether the loader holds exactly `count` columns: a copy takes one header
// name more, and a row of count + 1 cells fits only then.
bool hasColumns(const CSVFileLoader &loader, int count)
{
    CSVFileLoader probe = loader;
    QString text = QStringLiteral("probe\n");
    for (int i = 0; i <= count; ++i)
        text += i == 0 ? QStringLiteral("x") : QStringLiteral(";x");
    QTextStream stream(&text, QIODevice::ReadOnly);
    return attempt([&] { probe.LoadFile(stream, QString()); }).isNull();
}

// The loader holds `count` columns, the first of them named by `names`,
// and the cells of `rows` in them, row by row.
void requireHolds(const CSVFileLoader &loader, const QStringList &names, int count,
                  const std::vector<QStringList> &rows)
{
    require(hasColumns(loader, count), "the number of columns is not the header's");
    QString joined;
    for (int c = 0; c < int(names.size()); ++c) {
        const QString &name = names.at(c);
        joined += c == 0 ? name : QLatin1Char(';') + name;
        if (names.indexOf(name) != c)
            continue; // only the first of a name can be found
        const CSVColumn *column = loader.GetColumn(name);
        require(column != nullptr, "a column of the header is not found");
        require(column->GetName() == name, "GetColumn found a column of another name");
        const QStringList *values = column->GetValues();
        require(values != nullptr, "a column without values");
        require(int(values->size()) == int(rows.size()), "a column has not one value for each row");
        for (int r = 0; r < int(rows.size()); ++r)
            require(values->at(r) == rows[size_t(r)].at(c), "a cell is not the part of its row");
        require(loader.GetColumn(name) == column, "GetColumn gives another column the second time");
    }
    require(names.isEmpty() || const_cast<CSVFileLoader &>(loader).CheckHeader(joined),
            "CheckHeader misses a name");
    require(loader.GetErrorText().isEmpty(), "the error text was written");
}

void requireMessage(const QString &message, const Expected &expected, const QString &name)
{
    if (expected.empty) {
        require(message == (name.isEmpty() ? QStringLiteral("Stream") : name) + QStringLiteral(" is empty!"),
                "no \"is empty!\" failure for a text without a header");
    } else if (expected.corrupt) {
        require(message == corruptMessage(), "no \"Data is corrupt!\" failure for a row that does not fit");
    } else {
        require(message.isNull(), "a failure for a well-formed text");
    }
}

QTemporaryDir &scratch()
{
    static QTemporaryDir dir;
    return dir;
}

} // namespace

void fuzzOne(const QByteArray &input)
{
    const QString path = scratch().filePath(QStringLiteral("input.csv"));
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(input) != input.size())
            return; // no room to write it: nothing to learn
    }

    QStringList lines;
    {
        QFile file(path);
        require(file.open(QIODevice::ReadOnly | QIODevice::Text), "the input file does not open");
        lines = streamLines(file);
    }
    if (isAscii(input))
        require(lines == asciiLines(input), "the text stream cuts 7-bit lines otherwise than expected");
    const Expected expected = expectedFrom(lines, 0);
    const int count = int(expected.names.size());

    // The file.
    CSVFileLoader loader;
    requireMessage(attempt([&] { loader.LoadFile(path); }), expected, path);
    requireHolds(loader, expected.names, count, expected.rows);

    // The same bytes through the stream overload, without a name.
    {
        QBuffer buffer;
        buffer.setData(input);
        require(buffer.open(QIODevice::ReadOnly | QIODevice::Text), "the buffer does not open");
        QTextStream stream(&buffer);
        Morvane::Compat::setUtf8(stream);
        stream.setAutoDetectUnicode(true);
        CSVFileLoader fromStream;
        requireMessage(attempt([&] { fromStream.LoadFile(stream, QString()); }), expected, QString());
        requireHolds(fromStream, expected.names, count, expected.rows);
    }

    // A copy holds the same, and does not change when the original does.
    const CSVFileLoader copy = loader;
    requireHolds(copy, expected.names, count, expected.rows);

    // The file once more into the same loader: its header adds a second set
    // of the same columns, and its rows now have to fill both sets.
    const Expected appended = expectedFrom(lines, count);
    requireMessage(attempt([&] { loader.LoadFile(path); }), appended, path);
    std::vector<QStringList> rows = expected.rows;
    rows.insert(rows.end(), appended.rows.begin(), appended.rows.end());
    requireHolds(loader, expected.names, count + int(appended.names.size()), rows);
    requireHolds(copy, expected.names, count, expected.rows);
}
