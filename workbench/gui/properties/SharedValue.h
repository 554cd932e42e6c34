#pragma once

#include <QString>
#include <QVariant>

class nkPropertyEditorNkdObjectWrapper;
template <typename T>
class QList;

/// What several objects have in one property.
struct SharedValue
{
    /// The first object's value, also where the others differ.
    QVariant value;
    bool differing = false;

    static SharedValue of(const QList<nkPropertyEditorNkdObjectWrapper> &objects, const QString &property);
    /// By type, then value: 1 is not "1" and nothing is not an empty text. Not a number equals itself.
    static bool same(const QVariant &left, const QVariant &right);
};
