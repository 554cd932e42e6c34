#include "LoaderList.h"

#include <interchange/importer/ImportKinds.h>

#include <assimp/BaseImporter.h>
#include <assimp/Importer.hpp>
#include <assimp/importerdesc.h>

#include <algorithm>
#include <cctype>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>

using namespace interchange;

namespace {

template <size_t Size>
bool contains(const char *const (&list)[Size], const std::string &word)
{
    return std::find(std::begin(list), std::end(list), word) != std::end(list);
}

/// The ending of a file's name, lower case, without the point.
std::string endingOf(const std::string &path)
{
    const size_t name = path.find_last_of("/\\") + 1;
    const size_t point = path.rfind('.');
    if (point == std::string::npos || point < name)
        return std::string();
    std::string ending = path.substr(point + 1);
    for (char &letter : ending)
        letter = char(std::tolower(static_cast<unsigned char>(letter)));
    return ending;
}

bool isListed(const aiImporterDesc *loader)
{
    if (!loader || !loader->mFileExtensions)
        return false;
    std::istringstream endings(loader->mFileExtensions);
    std::string ending;
    bool hasAny = false;
    while (endings >> ending) {
        if (!contains(importkinds::Models, ending))
            return false;
        hasAny = true;
    }
    return hasAny;
}

} // namespace

void LoaderList::close(Assimp::Importer &importer)
{
    for (size_t i = importer.GetImporterCount(); i-- > 0;) {
        if (isListed(importer.GetImporterInfo(i)))
            continue;
        const std::unique_ptr<Assimp::BaseImporter> loader(importer.GetImporter(i));
        importer.UnregisterLoader(loader.get());
    }
}

bool LoaderList::isKnown(const char *path, bool companionsToo)
{
    const std::string ending = endingOf(path);
    return contains(importkinds::Models, ending)
           || (companionsToo && contains(importkinds::Companions, ending));
}

bool LoaderList::isText(const char *path)
{
    return contains(importkinds::Texts, endingOf(path));
}
