#ifndef MORVANE_CSVCOLUMN_H
#define MORVANE_CSVCOLUMN_H

#include "frame/morvane_global.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

namespace Morvane {

namespace detail {
class CSVColumnCells;
class CSVCells;
} // namespace detail

// One column of a semicolon-separated file as CSVFileLoader reads it: the
// heading and one value for each data row, in file order. A value is the
// cell exactly as it stood in the file: not trimmed, possibly empty.
//
// A column is a plain value: copying it shares the values until one side
// changes them.
//
// A column that a loader filled keeps its cells in the text the loader read
// (one text for all rows, with where each cell starts) and makes them strings
// only when GetValues asks for them, once, for all copies of the column: a
// file of 100,000 rows is then not two million strings of its own. Making
// them is safe from several threads at once, as reading a value is.
class MORVANE_EXPORT CSVColumn
{
public:
    CSVColumn();
    explicit CSVColumn(const QString &name);
    CSVColumn(const CSVColumn &other);
    CSVColumn &operator=(const CSVColumn &other);
    virtual ~CSVColumn();

    void SetName(const QString &name);
    QString GetName() const;

    // Appends one value behind those already there.
    void AddValue(const QString &value);

    // The values, one for each data row. The pointer points into this column
    // (for a loaded column, into the values its copies share): it stays
    // valid, and keeps pointing at the same list, as long as the column lives
    // and the loader that holds it is not changed.
    const QStringList *GetValues() const;

private:
    friend class CSVFileLoader;
    friend class detail::CSVCells;

    QString m_name;
    // The values of a column that no loader filled, or that was changed
    // after the load.
    QStringList m_values;
    // The cells of a loaded file, shared by the copies of the column; when
    // set, they are the column's values and m_values is unused.
    std::shared_ptr<detail::CSVColumnCells> m_cells;
};

} // namespace Morvane

#endif
