#include "frequencystore/csvcolumn.h"

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
    m_values.append(value);
}

const QStringList *CSVColumn::GetValues() const
{
    return &m_values;
}

} // namespace Morvane
