#include "frequencystore/csvcolumn.h"

#include "frequencystore/csvtable_p.h"

namespace Morvane {

CSVColumn::CSVColumn() = default;

CSVColumn::CSVColumn(const QString &name) : m_name(name)
{
}

CSVColumn::CSVColumn(const CSVColumn &other) = default;

CSVColumn &CSVColumn::operator=(const CSVColumn &other) = default;

CSVColumn::~CSVColumn() = default;

void CSVColumn::SetName(const QString &name)
{
    m_name = name;
}

QString CSVColumn::GetName() const
{
    return m_name;
}

void CSVColumn::AddValue(const QString &value)
{
    // A change takes the loaded cells over as strings of this column's own.
    if (m_cells) {
        m_values = *m_cells->values();
        m_cells.reset();
    }
    m_values.append(value);
}

const QStringList *CSVColumn::GetValues() const
{
    return m_cells ? m_cells->values() : &m_values;
}

} // namespace Morvane
