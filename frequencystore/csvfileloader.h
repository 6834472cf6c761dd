#ifndef MORVANE_CSVFILELOADER_H
#define MORVANE_CSVFILELOADER_H

#include "frame/morvane_global.h"
#include "frequencystore/csvcolumn.h"

#include <QtCore/QString>
#include <QtCore/QVector>

QT_BEGIN_NAMESPACE
class QTextStream;
QT_END_NAMESPACE

namespace Morvane {

// Reads one semicolon-separated text into memory as named columns. It knows
// nothing of lists or records: the importers look columns up by name and walk
// the values by row index.
//
// The format, as the reader takes it:
//
// - Lines are read with QTextStream::readLine(10240). A longer line comes back
//   in pieces of 10240 characters, and each piece is a line of its own. A line
//   of exactly 10240 characters is followed by an empty piece (what is left of
//   it before its line end), so it ends the data like an empty line does, or,
//   ahead of the header, makes the file read as empty.
// - Lines whose first character is "#" are comments, but only ahead of the
//   header. A "#" line after the header is a data row like any other. A blank
//   or anything else ahead of the "#" makes the line a header.
// - The first line that is no comment is the header. When it is empty (the
//   file is empty, holds only comments, or starts with an empty line) the
//   load fails with "<name> is empty!".
// - Every line is split at ";" with empty parts kept. There is no quoting and
//   no escaping of any kind, nothing is trimmed, names are case-sensitive and
//   may repeat, and a trailing ";" gives a last part that is empty: a header
//   "A;B;" has three columns, the last with an empty name.
// - Each data row must have exactly as many parts as there are columns;
//   otherwise the load fails with "Data is corrupt!. It can't be assigned to
//   the header!". A row is taken whole or not at all.
// - The first empty line after the header ends the data; nothing after it is
//   read, not even a row that would be corrupt. A line of blanks is not empty.
//
// A file is opened read-only in text mode, in which the text stream drops
// every carriage return of the decoded text (not only those ahead of a line
// feed): LF and CR LF files read the same, and a lone CR inside a cell
// disappears. The text is taken as UTF-8 unless it starts with a byte order
// mark, which then decides: UTF-8, UTF-16 or UTF-32, either byte order; the
// mark itself is not part of the first line. Malformed bytes read as U+FFFD,
// a NUL byte as U+0000 inside its cell. The same file gives the same columns
// on Qt 5 and Qt 6, with one exception that lies in Qt's decoders: a
// malformed UTF-8 sequence that straddles one of the text stream's 16 KiB
// read blocks may decode differently (other replacement characters, and on
// Qt 6 the byte behind it may be lost).
//
// The stream overload reads the stream as the caller set it up (device,
// open mode, encoding); it changes nothing of it but the read position.
//
// Loading into a loader that already holds columns appends: the new header
// adds its columns behind the old ones, which keep their values, and every
// new row has to match the whole count of columns. On a failure the loader
// keeps the columns and rows read up to it.
//
// A load into an empty loader keeps the rows as it read them, in one text,
// and its columns read their cells from there (see CSVColumn); a load behind
// columns already there appends to them string by string.
//
// Failures are thrown as ORBELIN::OrbelinException; GetErrorText() is never
// written and stays empty. A loader is a plain value and may be copied; the
// columns are shared until one side changes, and reading a loader (GetColumn)
// never unshares them, so the pointers it hands out stay put.
//
// The constructors from a name are explicit: a file name does not turn into
// a loaded file unasked. CheckHeader, like the private Exist it uses, is not
// const, as the interface has always had it; GetErrorText returns a copy.
class MORVANE_EXPORT CSVFileLoader
{
public:
    CSVFileLoader();
    // Runs LoadFile(fileName), and so throws what that throws.
    explicit CSVFileLoader(const QString &fileName);
    CSVFileLoader(const CSVFileLoader &other);
    CSVFileLoader &operator=(const CSVFileLoader &other);
    virtual ~CSVFileLoader();

    // Opens the file read-only in text mode and reads it as UTF-8 (or as the
    // byte order mark says). A file that cannot be opened, a directory for
    // one, throws "Can't open file for reading: '<fileName>'".
    void LoadFile(const QString &fileName);

    // Reads the stream from its current position. fileName only names the
    // text in the message of an empty text, which says "Stream is empty!"
    // when fileName is empty.
    void LoadFile(QTextStream &stream, const QString &fileName);

    // The first column with exactly this name (case-sensitive), or null. The
    // pointer stays valid while the loader lives and is not changed.
    const CSVColumn *GetColumn(const QString &name) const;

    // Whether every part of names, split at ";" with empty parts kept, is the
    // name of a column. An empty argument is one empty part and is found only
    // when the file has a column with an empty name.
    bool CheckHeader(const QString &names);

    // Always empty: failures are thrown.
    QString GetErrorText() const;

private:
    // Adds one column for each part of the line behind those there are.
    void ParseHeader(const QString &line);
    // Adds part i of the line to column i, or throws when the number of
    // parts is not the number of columns.
    void ProcessData(const QString &line);
    bool Exist(const QString &name);

    QVector<CSVColumn> m_columns;
    QString m_errorText;
};

} // namespace Morvane

#endif
