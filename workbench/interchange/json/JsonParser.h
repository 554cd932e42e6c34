#pragma once

#include <interchange/json/JsonError.h>
#include <interchange/json/JsonReader.h>
#include <interchange/json/JsonTree.h>

#include <QCoreApplication>

#include <vector>

namespace interchange {

/// One pass over one JSON text; the works behind JsonReader. Containers that are open lie in a vector of its own,
/// so depth costs memory and no stack.
class JsonParser
{
    Q_DECLARE_TR_FUNCTIONS(JsonParser)

public:
    JsonParser(const QByteArray &text, const JsonLimits &limits, const JsonGoOn &goOn);

    /// Reads the whole text; false when something is wrong, which error() then tells.
    bool parse();
    const JsonError &error() const { return m_error; }
    /// The finished tree; to be called once, after parse() has said true.
    JsonTree takeTree() { return std::move(m_tree); }

private:
    struct Open
    {
        quint32 cell;     ///< the container
        quint32 children; ///< how many of its children were begun
        quint32 keyOffset;
        quint32 keyLength; ///< the key of the member being read; 0 before its key was read
        bool isObject;
        bool keyEscaped;
    };

    bool goesOn();
    bool parseOutermost();
    bool parseInside();
    bool parseElementOrEnd();
    bool parseMemberOrEnd();
    bool parseSeparator(Open &container, char closing);
    bool parseKey(Open &container);
    bool parseValue();
    bool parseLiteral(const char *word, int length, JsonKind kind);
    bool parseNumber();
    bool parseDigits();
    bool parseString(bool &escaped);
    bool parseEscape();
    bool parseTextValue();
    bool openContainer(JsonKind kind);
    void closeContainer();

    void skipSpace();
    bool atEnd() const { return m_at == m_end; }
    quint32 offsetOf(const char *at) const { return static_cast<quint32>(at - m_begin); }
    JsonCell &appendCell(const char *from, JsonKind kind);
    void finishCell(JsonCell &cell);

    bool fail(JsonErrorCode code, const QString &reason);
    bool failExpecting(const QString &expected);
    bool failInString();
    QString currentPath() const;
    QString characterHere() const;

    QByteArray m_text;
    JsonLimits m_limits;
    JsonGoOn m_goOn;
    int m_untilAsked = 0;
    JsonTree m_tree;
    JsonError m_error;
    std::vector<Open> m_open;
    const char *m_begin;
    const char *m_end;
    const char *m_at;
};

} // namespace interchange
