#pragma once

#include "WindowFocus.h"
#include "kernel/services/PreferencesService.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

#include <algorithm>

/// What the tests of the preference pages ask of every page.
namespace PageCheck {

inline kernel::PreferencesService &service()
{
    return static_cast<kernel::PreferencesService &>(nkPreferencesService::the());
}

/// The preferences on the disk.
inline QByteArray storedBytes()
{
    service().flush();
    QFile file(service().file());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline QPushButton *button(const QWidget &page, const QString &text)
{
    for (QPushButton *each : page.findChildren<QPushButton *>()) {
        if (each->text().remove(QLatin1Char('&')) == text) {
            return each;
        }
    }
    return nullptr;
}

/// Whether a label that is not hidden holds this text.
inline bool says(const QWidget &page, const QString &text)
{
    for (const QLabel *label : page.findChildren<QLabel *>()) {
        if (!label->isHidden() && label->text().contains(text)) {
            return true;
        }
    }
    return false;
}

/// The controls that a person works with; not the parts that they are made of.
inline QList<QWidget *> controls(const QWidget &page)
{
    QList<QWidget *> found;
    for (QWidget *each : page.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (qobject_cast<QAbstractButton *>(each) || qobject_cast<QComboBox *>(each)
            || qobject_cast<QAbstractSpinBox *>(each) || qobject_cast<QLineEdit *>(each)) {
            found.append(each);
        }
    }
    return found;
}

/// The kinds of the controls of which a screen reader would say nothing.
inline QStringList unnamed(const QWidget &page)
{
    QStringList found;
    for (const QWidget *each : controls(page)) {
        const auto *withText = qobject_cast<const QAbstractButton *>(each);
        const bool hasText = withText && !withText->text().isEmpty();
        if (each->accessibleName().isEmpty() && !hasText) {
            found.append(QLatin1String(each->metaObject()->className()));
        }
    }
    return found;
}

inline bool isExclusive(const QWidget *control)
{
    const auto *button = qobject_cast<const QAbstractButton *>(control);
    return button && button->autoExclusive();
}

/// The controls that can be used and are not reached by the Tab key.
inline QStringList unreached(QWidget &page)
{
    page.show();
    QStringList found;
    if (!QTest::qWaitForWindowActive(&page)) {
        return {QStringLiteral("the page is never active")};
    }
    QSet<QWidget *> reached;
    for (int i = 0; i < 40; ++i) {
        reached.insert(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : &page, Qt::Key_Tab);
    }
    for (QWidget *each : controls(page)) {
        // Of a group, one is reached; the arrow keys lead on from it.
        const bool isReached = std::any_of(reached.begin(), reached.end(), [each](QWidget *one) {
            return one == each || (isExclusive(one) && isExclusive(each));
        });
        if (each->isEnabled() && !isReached) {
            found.append(each->accessibleName() + QLatin1String(each->metaObject()->className()));
        }
    }
    return found;
}

} // namespace PageCheck
