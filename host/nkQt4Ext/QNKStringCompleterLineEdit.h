#pragma once

#include "nkQt4ExtExport.h"

#include <QLineEdit>

#include <functional>

class QCompleter;
class QStringListModel;

/// A line edit that offers completions while a person types.
class NK_QT4EXT_EXPORT QNKStringCompleterLineEdit : public QLineEdit
{
    Q_OBJECT
public:
    /// Answers the words to offer for a typed text, best first, at most limit.
    using Completions = std::function<QStringList(const QString &text, int limit)>;

    explicit QNKStringCompleterLineEdit(QWidget *parent = nullptr);
    ~QNKStringCompleterLineEdit() override;

    /// An empty function offers nothing.
    void setCompletions(const Completions &completions);

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    bool offer(const QString &text);

    Completions m_completions;
    QCompleter *m_completer = nullptr;
    QStringListModel *m_words = nullptr;
};
