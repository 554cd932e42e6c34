#pragma once

#include <interchange/json/JsonPatches.h>
#include <interchange/json/JsonValue.h>

#include <QByteArrayList>
#include <QSet>
#include <QVector>

#include <map>
#include <vector>

namespace interchange {

/// Changes to the objects and arrays of a JSON text, made as patches: members are given another value or key, go, and
/// come at the end of their object, laid out like the members that are there; so do elements. Nothing else is touched.
///
/// All values belong to one tree. What loses its last member or element goes itself, upwards, but for the outermost
/// value and for elements, whose places others may count.
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
    /// @param container the object or array that the member or element stands in
    void remove(const JsonValue &container, const JsonValue &child);
    void append(const JsonValue &object, const Member &member);
    /// Appends a member whose value is an object of these members, at least one.
    void appendObject(const JsonValue &object, const QString &key, const QVector<Member> &members);
    /// Appends an element to an array. @param value as JSON
    void appendElement(const JsonValue &array, const QByteArray &value);
    /// Appends a member whose value is an array of these elements, each in a line where the members have lines.
    void appendList(const JsonValue &object, const QString &key, const QByteArrayList &elements);
    /// Makes the member with this key a list of these whole numbers: those that stay in their order keep their text. A
    /// list without a number goes, one that is not there comes.
    void setNumbers(const JsonValue &object, QLatin1String key, const std::vector<quint32> &numbers);
    /// The text of an object of these members, laid out like another one.
    /// @param like absent, or without members: all in one line, spaced like `around`
    QByteArray elementText(const JsonValue &like, const JsonValue &around,
                           const QVector<Member> &members) const;
    /// The same, in one line.
    static QByteArray inLine(const QVector<Member> &members, bool isSpaced);
    /// Whether values stand apart from the colons in front of them.
    bool isSpaced(const JsonValue &object) const { return layoutOf(object).colon.endsWith(' '); }
    /// Makes the patches for all members that go and come. To be called once, at the end.
    void finish();

    /// A whole number of a text that was checked, however it is spelled.
    static quint32 wholeOf(const JsonValue &number);
    /// A text as JSON string.
    static QByteArray quoted(const QString &text);

private:
    /// What happens to the members of one object.
    struct Changes
    {
        QSet<quint32> removed; ///< indices in the tree
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
    bool isElement(quint32 index) const;
    bool isInSpaced(const JsonValue &container) const;
    void passUpRemovals();
    void finish(const JsonValue &object, const Changes &changes);
    Layout layoutOf(const JsonValue &container) const;
    static Layout innerOf(const Layout &outer);
    QByteArray between(quint32 from, quint32 to) const;
    void patch(quint32 from, quint32 to, const QByteArray &text);

    const JsonTree &m_tree;
    quint32 m_base;
    JsonPatches &m_patches;
    std::map<quint32, Changes> m_changes;   ///< by the container's index
    mutable std::vector<quint32> m_parents; ///< by index; made when it is first asked for
};

} // namespace interchange
