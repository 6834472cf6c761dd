#include "frequencystore/csvfileloader.h"

#include "frequencystore/csvtable_p.h"

#include "frame/exceptions.h"
#include "frame/qtcompat.h"

#include <QtCore/QFile>
#include <QtCore/QStringList>
#include <QtCore/QTextStream>

#include <memory>

namespace Morvane {

namespace {

// The longest line readLine hands out at once; a longer one comes in pieces.
constexpr qint64 MaxLineLength = 10240;
static_assert(MaxLineLength <= detail::CSVTable::MaxRowLength, "a line is one row of the table");

const QLatin1Char Separator(';');
const QLatin1Char CommentMark('#');
const QLatin1Char LineFeed('\n');

QStringList splitLine(const QString &line)
{
    QString text = line;
    if (text.endsWith(LineFeed))
        text.chop(1);
    return text.split(Separator, Qt::KeepEmptyParts, Qt::CaseSensitive);
}

ORBELIN::OrbelinException corruptRow()
{
    return ORBELIN::OrbelinException(QStringLiteral("Data is corrupt!. It can't be assigned to the header!"));
}

} // namespace

CSVFileLoader::CSVFileLoader() = default;

CSVFileLoader::CSVFileLoader(const QString &fileName)
{
    LoadFile(fileName);
}

CSVFileLoader::CSVFileLoader(const CSVFileLoader &other) = default;

CSVFileLoader &CSVFileLoader::operator=(const CSVFileLoader &other) = default;

CSVFileLoader::~CSVFileLoader() = default;

void CSVFileLoader::LoadFile(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        throw ORBELIN::OrbelinException(
            QStringLiteral("Can't open file for reading: '%1'").arg(fileName));
    }
    QTextStream stream(&file);
    // UTF-8 unless the text starts with a byte order mark.
    Compat::setUtf8(stream);
    stream.setAutoDetectUnicode(true);
    LoadFile(stream, fileName);
}

void CSVFileLoader::LoadFile(QTextStream &stream, const QString &fileName)
{
    // Comments are recognised only ahead of the header. At the end of the
    // stream readLine gives a null string, which is no comment and empty.
    QString line;
    do {
        line = stream.readLine(MaxLineLength);
    } while (line.startsWith(CommentMark));

    if (line.isEmpty()) {
        throw ORBELIN::OrbelinException(QStringLiteral("%1 is empty!")
            .arg(fileName.isEmpty() ? QStringLiteral("Stream") : fileName));
    }

    // A load into an empty loader keeps its rows as one table that its
    // columns read in place; a load behind columns already there appends to
    // them cell by cell, as strings. Either way the first empty line ends the
    // data, and what follows it is never read.
    const bool appending = !m_columns.isEmpty();
    ParseHeader(line);
    std::shared_ptr<detail::CSVTable> table;
    if (!appending) {
        table = std::make_shared<detail::CSVTable>(int(m_columns.size()));
        for (int i = 0; i < int(m_columns.size()); ++i)
            m_columns[i].m_cells = std::make_shared<detail::CSVColumnCells>(table, i);
    }
    while (stream.readLineInto(&line, MaxLineLength) && !line.isEmpty()) {
        if (!table)
            ProcessData(line);
        else if (!table->addRow(line))
            throw corruptRow();
    }
}

const CSVColumn *CSVFileLoader::GetColumn(const QString &name) const
{
    for (const CSVColumn &column : m_columns) {
        if (column.GetName() == name)
            return &column;
    }
    return nullptr;
}

bool CSVFileLoader::CheckHeader(const QString &names)
{
    const QStringList parts = names.split(Separator, Qt::KeepEmptyParts, Qt::CaseSensitive);
    for (const QString &name : parts) {
        if (!Exist(name))
            return false;
    }
    return true;
}

QString CSVFileLoader::GetErrorText() const
{
    return m_errorText;
}

void CSVFileLoader::ParseHeader(const QString &line)
{
    if (line.isEmpty())
        return;
    const QStringList names = splitLine(line);
    m_columns.reserve(m_columns.size() + names.size());
    for (const QString &name : names)
        m_columns.append(CSVColumn(name));
}

void CSVFileLoader::ProcessData(const QString &line)
{
    if (line.isEmpty())
        return;
    const QStringList parts = splitLine(line);
    // Checked before the first cell is added, so that a refused row leaves
    // no trace in the columns.
    if (parts.size() != m_columns.size())
        throw corruptRow();
    for (int i = 0; i < int(parts.size()); ++i)
        m_columns[i].AddValue(parts.at(i));
}

bool CSVFileLoader::Exist(const QString &name)
{
    return GetColumn(name) != nullptr;
}

} // namespace Morvane
