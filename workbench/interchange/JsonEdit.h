#pragma once

#include <interchange/JsonPatches.h>
#include <interchange/JsonValue.h>

#include <QByteArrayList>
#include <QVector>

#include <map>

namespace interchange {

/// Changes to the objects of a JSON text, made as patches: members are given another value or key, go, and come at
/// the end of their object, laid out like the members that are there. Nothing else is touched.
///
/// All values belong to one tree. An object from which the last member goes goes itself, upwards, but for the
/// outermost one.
class JsonEdit
{
public:
    struct Member
    {
        QString key;
        QByteArray value; ///< as JSON
    };

    /// @param base where the tree's text begins in the text that the patches are for
    JsonEdit(const JsonTree &tree, quint32 base, JsonPatches &patches);

    void replace(const JsonValue &value, const QByteArray &text);
    void rename(const JsonValue &member, const QString &key);
    /// @param object the one that the member stands in
    void remove(const JsonValue &object, const JsonValue &member);
    void append(const JsonValue &object, const Member &member);
    /// Appends a member whose value is an object of these members, at least one.
    void appendObject(const JsonValue &object, const QString &key, const QVector<Member> &members);
    /// Makes the patches for all members that go and come. To be called once, at the end.
    void finish();

    /// A text as JSON string.
    static QByteArray quoted(const QString &text);

private:
    /// What happens to the members of one object.
    struct Changes
    {
        QVector<quint32> removed; ///< indices in the tree
        QByteArrayList added;
    };
    /// The white space of an object.
    struct Layout
    {
        QByteArray lead;      ///< in front of the first member
        QByteArray separator; ///< between two members
        QByteArray colon;
        QByteArray tail; ///< behind the last member
    };

    quint32 parentOf(quint32 index) const;
    void passUpRemovals();
    void finish(const JsonValue &object, const Changes &changes);
    Layout layoutOf(const JsonValue &object) const;
    QByteArray between(quint32 from, quint32 to) const;
    void patch(quint32 from, quint32 to, const QByteArray &text);

    const JsonTree &m_tree;
    quint32 m_base;
    JsonPatches &m_patches;
    std::map<quint32, Changes> m_changes; ///< by the object's index
};

} // namespace interchange
