#pragma once

#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkObjectService.h>

#include <QObject>
#include <QPair>
#include <QStringList>
#include <QVector>

/// Writes down what the services announce, for comparison.
class AnnouncementLog : public QObject
{
public:
    AnnouncementLog()
    {
        connect(&nkMetadataService::the(), &nkMetadataService::metadataChanged, this,
                [this](nkMetadataTypes::ChangeFlag flags) { m_flags.append(int(flags)); });
        connect(&nkObjectService::the(), &nkObjectService::propertyChanged, this,
                [this](const nkdObject &object, const QString &property) {
                    m_properties.append({object.getObjectId(), property});
                });
    }

    /// The flags of every metadataChanged since the last take.
    QVector<int> takeFlags()
    {
        QVector<int> flags;
        flags.swap(m_flags);
        return flags;
    }

    /// The objects and properties of every propertyChanged since the last take.
    QVector<QPair<quint64, QString>> takeProperties()
    {
        QVector<QPair<quint64, QString>> properties;
        properties.swap(m_properties);
        return properties;
    }

    void clear()
    {
        m_flags.clear();
        m_properties.clear();
    }

private:
    QVector<int> m_flags;
    QVector<QPair<quint64, QString>> m_properties;
};
