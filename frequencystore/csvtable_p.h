#ifndef MORVANE_CSVTABLE_P_H
#define MORVANE_CSVTABLE_P_H

// The cells of a loaded semicolon-separated file, kept in the text that was
// read instead of one string per cell. Private to the library.

#include "frequencystore/csvcolumn.h"

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QStringView>

#include <mutex>
#include <vector>

namespace Morvane {
namespace detail {

// The data rows of one load: the rows one after the other in one text, and
// for each row where it starts in the text and where each of its cells
// starts in the row. A row is a line as the loader reads it, at most
// MaxRowLength characters long, so that the starts within a row fit in 16
// bits: the cost of a row is its text and two bytes per cell.
class CSVTable
{
public:
    static constexpr int MaxRowLength = 0xfffe;

    explicit CSVTable(int columns) : m_columns(columns) {}

    // Adds the line as a row when it has as many parts, split at ";" with
    // empty parts kept, as the table has columns (a trailing line feed is not
    // part of the last cell); returns false and adds nothing otherwise.
    bool addRow(QStringView line)
    {
        Q_ASSERT(line.size() <= MaxRowLength);
        if (!line.isEmpty() && line.back() == QLatin1Char('\n'))
            line.chop(1);
        int parts = 1;
        for (const QChar c : line)
            parts += c == QLatin1Char(';');
        if (parts != m_columns)
            return false;
        m_rowStarts.push_back(m_text.size());
        m_cellStarts.push_back(0);
        const int length = int(line.size());
        for (int i = 0; i < length; ++i) {
            if (line[i] == QLatin1Char(';'))
                m_cellStarts.push_back(quint16(i + 1));
        }
        // One past the end of the last cell, as if a ";" followed it.
        m_cellStarts.push_back(quint16(length + 1));
        m_text.append(line.data(), int(line.size()));
        return true;
    }

    int rows() const { return int(m_rowStarts.size()); }

    QStringView cell(int row, int column) const
    {
        const quint16 *starts = m_cellStarts.data() + std::size_t(row) * std::size_t(m_columns + 1);
        return QStringView(m_text.constData() + m_rowStarts[std::size_t(row)] + starts[column],
                           starts[column + 1] - starts[column] - 1);
    }

private:
    int m_columns;
    QString m_text;
    std::vector<qsizetype> m_rowStarts;
    std::vector<quint16> m_cellStarts; // columns + 1 for each row
};

// One column of a table, as a CSVColumn holds it. The strings of its cells
// are made on the first call of values(), once, whichever copy of the
// column asks and from whichever thread.
class CSVColumnCells
{
public:
    CSVColumnCells(std::shared_ptr<const CSVTable> table, int column)
        : m_table(std::move(table)), m_column(column)
    {
    }

    int size() const { return m_table->rows(); }
    QStringView at(int row) const { return m_table->cell(row, m_column); }

    const QStringList *values() const
    {
        std::call_once(m_made, [this] {
            const int rows = size();
            m_values.reserve(rows);
            for (int row = 0; row < rows; ++row)
                m_values.append(at(row).toString());
        });
        return &m_values;
    }

private:
    std::shared_ptr<const CSVTable> m_table;
    int m_column;
    mutable std::once_flag m_made;
    mutable QStringList m_values;
};

// The cells of a column without making strings of them: what the importers
// read.
class CSVCells
{
public:
    static int count(const CSVColumn &column)
    {
        return column.m_cells ? column.m_cells->size() : int(column.m_values.size());
    }

    // The cell of a row; row must be below count().
    static QStringView at(const CSVColumn &column, int row)
    {
        return column.m_cells ? column.m_cells->at(row) : QStringView(column.m_values.at(row));
    }
};

} // namespace detail
} // namespace Morvane

#endif
