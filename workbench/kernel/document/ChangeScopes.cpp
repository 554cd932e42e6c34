#include "ChangeScopes.h"

#include "Document.h"
#include "DocumentCommand.h"
#include "Store.h"

#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkObjectService.h>

#include <QCoreApplication>

#include <algorithm>

namespace kernel {

namespace {

constexpr int AllMetadataFlags = nkMetadataTypes::SetsChanged | nkMetadataTypes::EntriesChanged
                                 | nkMetadataTypes::AssignmentsChanged;

struct PropertyName
{
    PropertyBit bit;
    QString name;
};

/// In the order in which the properties of one object are announced.
const std::vector<PropertyName> &propertyNames()
{
    static const std::vector<PropertyName> names{
        {NameProperty, QStringLiteral("name")},           {ColorProperty, QStringLiteral("color")},
        {LockedProperty, QStringLiteral("locked")},       {KeyProperty, QStringLiteral("key")},
        {ValueTypeProperty, QStringLiteral("valueType")}, {ValueProperty, QStringLiteral("value")},
    };
    return names;
}

} // namespace

ChangeScopes::ChangeScopes(Document &document) : m_document(document)
{
    connect(&m_stack, &QUndoStack::indexChanged, this, &ChangeScopes::onIndexChanged);
}

ChangeScopes::~ChangeScopes()
{
    // The stack tells that it is emptied when it goes.
    m_stack.disconnect(this);
}

Store &ChangeScopes::store()
{
    return *m_document.m_store;
}

// Scopes ------------------------------------------------------------------------------------------------

void ChangeScopes::open(bool undoable)
{
    if (m_depth++ == 0) {
        m_scope = Scope();
        m_scope.undoable = undoable;
        m_scope.firstNew = m_document.store().slotCount();
        m_scope.revisionBefore = m_revision;
    }
}

void ChangeScopes::close()
{
    Q_ASSERT(m_depth > 0);
    if (--m_depth == 0) {
        finish(std::move(m_scope));
    }
}

void ChangeScopes::openTitled(const nkUndoString &title)
{
    open(true);
    m_titles.push_back(title);
}

void ChangeScopes::closeTitled()
{
    m_titles.pop_back();
    close();
}

void ChangeScopes::finish(Scope scope)
{
    if (scope.log.isEmpty()) {
        return;
    }
    const Announcement announcement = pending(scope);
    if (scope.undoable) {
        const nkUndoString title = scope.isTitled ? scope.title : nkUndoString(scope.firstTitle);
        m_isPushing = true;
        m_stack.push(new DocumentCommand(*this, std::move(scope.log), title, scope.firstNew,
                                         scope.revisionBefore, m_revision));
    } else {
        m_stack.clear();
    }
    announce(announcement);
}

// Operations --------------------------------------------------------------------------------------------

void ChangeScopes::beginOperation(const char *title)
{
    open(true);
    if (m_operationDepth++ == 0) {
        m_operationTitle = title;
    }
}

void ChangeScopes::endOperation()
{
    if (--m_operationDepth == 0) {
        tellDeaths(m_scope.effects.died);
        // Still open afterwards: the operation stands inside a scope of somebody else.
        if (m_depth > 1 && !m_scope.isFirstAnnounced && !m_scope.log.isEmpty()) {
            announceFirst();
        }
    }
    close();
}

ChangeLog &ChangeScopes::log()
{
    Q_ASSERT(m_operationDepth > 0);
    if (m_scope.log.isEmpty()) {
        noteFirstChange();
    }
    if (!m_scope.isTitled && !m_titles.empty()) {
        m_scope.title = m_titles.front();
        m_scope.isTitled = true;
    }
    return m_scope.log;
}

void ChangeScopes::noteFirstChange()
{
    m_revision = ++m_lastRevision;
    m_scope.firstTitle = QCoreApplication::translate("Document", m_operationTitle);
}

// Announcing --------------------------------------------------------------------------------------------

void ChangeScopes::tellDeaths(QList<quint64> &died)
{
    if (!died.isEmpty()) {
        QList<quint64> ids;
        ids.swap(died);
        Q_EMIT m_document.objectsDied(ids);
    }
}

void ChangeScopes::announceFirst()
{
    const Announcement announcement = pending(m_scope);
    m_scope.isFirstAnnounced = true;
    m_scope.effects.flags = 0;
    m_scope.announcedTo = m_scope.log.size();
    announce(announcement);
}

ChangeScopes::Announcement ChangeScopes::pending(const Scope &scope) const
{
    return {scope.effects.flags,
            scope.log.propertyNews(m_document.store(), scope.announcedTo, scope.firstNew)};
}

void ChangeScopes::announce(const Announcement &announcement)
{
    if (announcement.flags == 0 && announcement.properties.empty()) {
        tellModified();
        return;
    }
    Q_EMIT m_document.aboutToAnnounce();
    const int metadataFlags = announcement.flags & AllMetadataFlags;
    if (metadataFlags != 0) {
        Q_EMIT nkMetadataService::the().metadataChanged(nkMetadataTypes::ChangeFlag(metadataFlags));
    }
    if ((announcement.flags & SceneChange) != 0) {
        Q_EMIT m_document.sceneChanged();
    }
    announceProperties(announcement.properties);
    tellModified();
}

void ChangeScopes::announceProperties(const std::vector<PropertyNews> &news)
{
    for (const PropertyNews &object : news) {
        for (const PropertyName &property : propertyNames()) {
            if ((object.properties & property.bit) != 0) {
                announceProperty(object.id, property.name);
            }
        }
    }
}

void ChangeScopes::announceProperty(quint64 id, const QString &name)
{
    // Asked each time: a listener may have deleted the object, or the whole scene.
    const nkObjectType type = m_document.typeOf(id);
    if (type != nkObjectType::Null) {
        Q_EMIT nkObjectService::the().propertyChanged(nkdObject(id, type), name);
    }
}

void ChangeScopes::tellModified()
{
    if (m_toldModified != isModified()) {
        m_toldModified = isModified();
        Q_EMIT m_document.modifiedChanged(m_toldModified);
    }
}

void ChangeScopes::markSaved()
{
    m_savedRevision = m_revision;
    m_stack.setClean();
    tellModified();
}

void ChangeScopes::startAnew(bool hasNews)
{
    Q_ASSERT(!isOpen());
    m_revision = ++m_lastRevision;
    m_savedRevision = m_revision;
    m_stack.clear();
    Q_EMIT m_document.cleared();
    announce({hasNews ? AllMetadataFlags | SceneChange : 0, {}});
}

// Loading -----------------------------------------------------------------------------------------------

void ChangeScopes::beginLoad()
{
    open(false);
    beginOperation(QT_TRANSLATE_NOOP("Document", "Load"));
}

void ChangeScopes::endLoad(bool keep)
{
    if (!keep) {
        m_scope.log.undo(store());
        m_scope.log = ChangeLog();
        m_revision = m_scope.revisionBefore;
        m_scope.effects = ChangeEffects();
    } else if (!m_scope.log.isEmpty()) {
        m_scope.effects.flags = AllMetadataFlags | SceneChange;
        m_scope.isFirstAnnounced = true;
    }
    endOperation();
    close();
}

// Steps of the stack ------------------------------------------------------------------------------------

void ChangeScopes::takeStep(DocumentCommand &command, bool forward)
{
    if (m_isPushing) {
        m_isPushing = false;
        return;
    }
    if (m_isRestoring || refuseStep()) {
        return;
    }
    std::vector<PropertyNews> news = command.log().propertyNews(store(), 0, command.firstNew());
    const auto isDead = [this](const PropertyNews &object) {
        return m_document.typeOf(object.id) == nkObjectType::Null;
    };
    news.erase(std::remove_if(news.begin(), news.end(), isDead), news.end());
    const ChangeEffects effects = forward ? command.log().redo(store()) : command.log().undo(store());
    m_revision = command.revision(forward);
    m_stepDeaths += effects.died;
    m_stepNews.flags |= effects.flags;
    m_stepNews.properties.insert(m_stepNews.properties.end(), news.begin(), news.end());
    m_hasStepNews = true;
}

/// While a scope is open no step is taken. The stack moves its index nevertheless; that is put right when it
/// tells its index.
bool ChangeScopes::refuseStep()
{
    if (!isOpen()) {
        return false;
    }
    if (m_refusedIndex < 0) {
        m_refusedIndex = m_stack.index();
    }
    return true;
}

void ChangeScopes::onIndexChanged()
{
    if (m_refusedIndex >= 0) {
        const int index = m_refusedIndex;
        m_refusedIndex = -1;
        m_isRestoring = true;
        m_stack.setIndex(index);
        m_isRestoring = false;
    }
    if (m_hasStepNews) {
        Announcement news;
        std::swap(news, m_stepNews);
        m_hasStepNews = false;
        tellDeaths(m_stepDeaths);
        announce(news);
    }
}

} // namespace kernel
