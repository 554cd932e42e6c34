#pragma once

#include <interchange/foreign/ForeignScene.h>
#include <interchange/ifc/IfcValue.h>
#include <interchange/ifc/StepArguments.h>
#include <interchange/ifc/StepFile.h>

#include <QString>

#include <unordered_map>
#include <utility>
#include <vector>

namespace interchange {

/// The properties of an IFC file as entries. Each is read once, however many sets have it, and equal ones have one
/// number: sets are compared by numbers.
class IfcProperties
{
public:
    using Numbers = std::vector<quint32>;

    /// The most properties that are looked at, for each set that has them. A short file can name millions, by sets
    /// and properties that are made of each other.
    static constexpr qint64 MostWork = 8000000;

    /// Both outlive this.
    IfcProperties(const StepFile &file, ImportReport &report);

    /// The entries of properties and quantities, each key once. What has no form as entries is noted.
    /// @param prefix comes before their keys
    Numbers entriesOf(const std::vector<quint64> &properties, const QString &prefix = QString());
    const ForeignScene::Entry &entry(quint32 number) const { return m_entries[number]; }
    /// More than MostWork was asked for; entriesOf() gives out no more.
    bool isOverfull() const { return m_work > MostWork; }

private:
    struct Step
    {
        quint64 property;
        QString prefix;
        int depth;
    };

    /// Entries, and the properties that they come from.
    using Found = std::vector<std::pair<quint32, quint64>>;

    Numbers uniqueOf(const Found &found);
    void addTo(Found &found, const Step &step, std::vector<Step> &waiting);
    bool readKnown(std::string_view type, IfcValue::Read &read) const;
    quint32 interned(ForeignScene::Entry entry);
    void note(quint64 property, const QString &name, ImportReason reason);
    static QString path(quint64 property, const QString &name);

    const StepFile &m_file;
    ImportReport &m_report;
    StepArguments m_arguments;
    std::vector<ForeignScene::Entry> m_entries;
    std::unordered_multimap<size_t, quint32> m_byHash;
    std::unordered_map<quint64, quint32>
        m_known; ///< from the number of a simple property to that of its entry
    qint64 m_work = 0;
};

} // namespace interchange
