#pragma once

#include <kernel/document/Document.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkObjectService.h>

#include <QObject>
#include <QStringList>

/// Writes down what is announced, one line an announcement, in order: "metadata 3" (flags), "selection 2" (size),
/// "scene", and "entry value" for the property of an object that name() has called "entry".
class NewsRecorder : public QObject
{
    Q_OBJECT
public:
    NewsRecorder()
    {
        connect(&nkMetadataService::the(), &nkMetadataService::metadataChanged, this,
                [this](nkMetadataTypes::ChangeFlag flags) {
                    m_news << QStringLiteral("metadata %1").arg(int(flags));
                });
        connect(&nkMetadataService::the(), &nkMetadataService::selectionChanged, this,
                [this](const QList<nkdObject> &objects) {
                    m_news << QStringLiteral("selection %1").arg(objects.size());
                });
        connect(&nkObjectService::the(), &nkObjectService::propertyChanged, this,
                [this](const nkdObject &object, const QString &property) {
                    m_news << QStringLiteral("%1 %2").arg(nameOf(object.getObjectId()), property);
                });
        connect(&kernel::Document::the(), &kernel::Document::sceneChanged, this,
                [this] { m_news << QStringLiteral("scene"); });
    }

    /// How an object is called in the lines of its properties.
    void name(const nkdObject &object, const QString &name) { m_names.insert(object.getObjectId(), name); }

    /// The lines since the last call.
    QStringList take()
    {
        QStringList news;
        news.swap(m_news);
        return news;
    }

private:
    QString nameOf(quint64 id) const { return m_names.value(id, QString::number(id)); }

    QStringList m_news;
    QHash<quint64, QString> m_names;
};
