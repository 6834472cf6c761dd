// The target list file: the notepad columns and the six texts of the
// entry's profile data.
//
// Header "Type;Comment;Frequency;IFBandwidth;AnalogDemod;Priority;ProfileID;
// SignalClass;TransmissionSystem;ProfileName;ThreatClass", without a trailing
// ";"; each row has its 11 cells each followed by ";", so one field more than
// the header. A file as written here does not import again: the reader stops
// at the first row. That is the format the programs reading target lists
// expect, and it stays so.

#include "frequencystore/filehandling_p.h"

#include "frame/exceptions.h"

#include <utility>

namespace Morvane {

using namespace filehandling;

// --- cells -----------------------------------------------------------------------

// The six texts are read from the entry's profile as they are, set or not:
// an entry without a profile writes "---" in all six. The reads go through
// the const entry, so that asking does not mark the profile as present.

void FileHandling::AppendPriority(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    SetCSVItem(std::as_const(entry).GetProfile_Data().GetPriority(), line, endOfRow);
}

void FileHandling::AppendProfileId(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    SetCSVItem(std::as_const(entry).GetProfile_Data().GetProfileID(), line, endOfRow);
}

void FileHandling::AppendSignalClass(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    SetCSVItem(std::as_const(entry).GetProfile_Data().GetSignalClass(), line, endOfRow);
}

void FileHandling::AppendTransmissionSystem(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    SetCSVItem(std::as_const(entry).GetProfile_Data().GetTransmissionSystem(), line, endOfRow);
}

void FileHandling::AppendProfileName(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    SetCSVItem(std::as_const(entry).GetProfile_Data().GetProfileName(), line, endOfRow);
}

void FileHandling::AppendThreatClass(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    SetCSVItem(std::as_const(entry).GetProfile_Data().GetThreatClass(), line, endOfRow);
}

// --- the file ----------------------------------------------------------------------

void FileHandling::ExportTargetList(const QString &fileName, FrequencyStoreListHelper &helper)
{
    ExportColumns(fileName, helper,
                  QStringLiteral("Type;Comment;Frequency;IFBandwidth;AnalogDemod;Priority;ProfileID;SignalClass;"
                                 "TransmissionSystem;ProfileName;ThreatClass\n"),
                  {&FileHandling::AppendType, &FileHandling::AppendComment, &FileHandling::AppendFrequency,
                   &FileHandling::AppendBandwidth, &FileHandling::AppendAnalogDemod, &FileHandling::AppendPriority,
                   &FileHandling::AppendProfileId, &FileHandling::AppendSignalClass,
                   &FileHandling::AppendTransmissionSystem, &FileHandling::AppendProfileName,
                   &FileHandling::AppendThreatClass});
}

// The profile columns, by name, after the notepad columns. Every cell that is
// stored makes the entry's profile present first (the non-const
// GetProfile_Data does that). Priority and ThreatClass take "---" for an
// empty cell and skip it: such a row leaves the member unset and, on its own,
// does not make the profile present. ProfileID, SignalClass,
// TransmissionSystem and ProfileName know no placeholder: the cell is stored
// as it stands, "---" and the empty text included, so one of these columns
// in the file gives every row a profile. A profile that ends up without one
// of its four mandatory texts fails the entry's Check, and the import ends at
// that row.
void FileHandling::ImportTargetList(const QString &fileName, FrequencyStoreList &list)
{
    importRows(fileName, list, true, [](const CSVFileLoader &loader) -> RowFiller {
        const CSVColumn *priority = loader.GetColumn(QStringLiteral("Priority"));
        const CSVColumn *profileId = loader.GetColumn(QStringLiteral("ProfileID"));
        const CSVColumn *signalClass = loader.GetColumn(QStringLiteral("SignalClass"));
        const CSVColumn *transmissionSystem = loader.GetColumn(QStringLiteral("TransmissionSystem"));
        const CSVColumn *profileName = loader.GetColumn(QStringLiteral("ProfileName"));
        const CSVColumn *threatClass = loader.GetColumn(QStringLiteral("ThreatClass"));
        if (!priority && !profileId && !signalClass && !transmissionSystem && !profileName && !threatClass)
            return RowFiller();
        return [=](FrequencyStoreEntry &entry, int row) {
            if (priority) {
                const QString text = cellAt(priority, row);
                if (text != emptyCell())
                    entry.GetProfile_Data().SetPriority(text);
            }
            if (profileId)
                entry.GetProfile_Data().SetProfileID(cellAt(profileId, row));
            if (signalClass)
                entry.GetProfile_Data().SetSignalClass(cellAt(signalClass, row));
            if (transmissionSystem)
                entry.GetProfile_Data().SetTransmissionSystem(cellAt(transmissionSystem, row));
            if (profileName)
                entry.GetProfile_Data().SetProfileName(cellAt(profileName, row));
            if (threatClass) {
                const QString text = cellAt(threatClass, row);
                if (text != emptyCell())
                    entry.GetProfile_Data().SetThreatClass(text);
            }
        };
    });
}

} // namespace Morvane
