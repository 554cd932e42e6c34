#include "LogModel.h"

#include "gui/dialogs/ValueText.h"
#include "kernel/services/LogService.h"
#include "kernel/services/ServiceRegistry.h"

#include <nkQt4Ext/nkIconManager.h>

#include <QLocale>

using kernel::LogLine;
using kernel::LogService;

namespace {

LogService &service()
{
    return kernel::ServiceRegistry::the().service<LogService>();
}

QIcon iconOf(int level)
{
    const QString name = level == LogService::Error     ? QStringLiteral("Error")
                         : level == LogService::Warning ? QStringLiteral("Warning")
                                                        : QStringLiteral("Information");
    return nkIconManager::getIcon(name, QStringLiteral("General"));
}

} // namespace

LogModel::LogModel(QObject *parent) : QAbstractTableModel(parent)
{
    m_soon.setSingleShot(true);
    connect(&m_soon, &QTimer::timeout, this, &LogModel::follow);
    connect(&service(), &LogService::reported, this, [this] { m_soon.start(0); });
    follow();
}

LogModel::~LogModel() = default;

void LogModel::follow()
{
    const QVector<LogLine> lines = service().linesSince(m_seen);
    m_seen = service().lineCount();
    if (lines.isEmpty()) {
        return;
    }
    const int surplus = rowCount() + lines.size() - LogService::capacity;
    if (surplus > 0) {
        beginRemoveRows({}, 0, surplus - 1);
        m_lines.erase(m_lines.begin(), m_lines.begin() + surplus);
        endRemoveRows();
    }
    beginInsertRows({}, rowCount(), rowCount() + lines.size() - 1);
    m_lines.insert(m_lines.end(), lines.cbegin(), lines.cend());
    endInsertRows();
}

void LogModel::clear()
{
    service().clear();
    beginResetModel();
    m_lines.clear();
    m_seen = service().lineCount();
    endResetModel();
}

QString LogModel::levelName(int level)
{
    return level == LogService::Error     ? tr("Error")
           : level == LogService::Warning ? tr("Warning")
                                          : tr("Information");
}

QString LogModel::textOf(const LogLine &line)
{
    const QString time = line.time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    return QStringList{time, levelName(line.level), line.title}.join(QStringLiteral("  "))
           + QStringLiteral(": ") + line.text;
}

int LogModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_lines.size());
}

int LogModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant LogModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    const LogLine &line = this->line(index.row());
    if (role == Qt::DecorationRole && index.column() == Level) {
        return iconOf(line.level);
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    switch (index.column()) {
    case Level:
        return levelName(line.level);
    case Time:
        return line.time.toString(QStringLiteral("HH:mm:ss"));
    case Source:
        return ValueText::oneLine(line.title);
    default:
        return ValueText::oneLine(line.text);
    }
}

QVariant LogModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
    case Level:
        return tr("Level");
    case Time:
        return tr("Time");
    case Source:
        return tr("Source");
    default:
        return tr("Message");
    }
}
