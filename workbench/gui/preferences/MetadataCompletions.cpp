#include "MetadataCompletions.h"

#include "AddWordMenu.h"

namespace {

MetadataCompletions::Source &theSource()
{
    static MetadataCompletions::Source source;
    return source;
}

} // namespace

void MetadataCompletions::setSource(const Source &source)
{
    theSource() = source;
}

void MetadataCompletions::feed(QNKStringCompleterLineEdit *edit)
{
    edit->setCompletions([](const QString &text, int limit) {
        const Source &source = theSource();
        return source.completions ? source.completions(text, limit) : QStringList();
    });
    const auto libraryFor = [](const QString &word) {
        const Source &source = theSource();
        return source.libraryFor ? source.libraryFor(word) : QString();
    };
    new AddWordMenu(edit, libraryFor, [](const QString &word) { theSource().add(word); });
}
