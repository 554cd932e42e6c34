#include "FolderGate.h"

#include "FolderFile.h"
#include "LoaderList.h"

#include <interchange/importer/ImportLimits.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace interchange;

namespace {

/// Without links and `..`; empty where there is no such file.
std::string realPath(const std::string &path)
{
    char real[PATH_MAX];
    return realpath(path.c_str(), real) ? std::string(real) : std::string();
}

/// Where an open file really is, whatever has become of its path meanwhile; empty where the system does not say.
std::string placeOf(int descriptor)
{
    char real[PATH_MAX];
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t size = readlink(link.c_str(), real, sizeof(real));
    return size > 0 ? std::string(real, size_t(size)) : std::string();
}

std::string folderOf(const std::string &path)
{
    return realPath(path.substr(0, path.rfind('/') + 1));
}

} // namespace

FolderGate::FolderGate(const std::string &model) : m_model(model), m_folder(folderOf(model))
{
    if (m_folder.empty() || m_folder.back() != '/')
        m_folder += '/';
}

std::string FolderGate::absolute(const char *path) const
{
    return path[0] == '/' ? std::string(path) : m_folder + path;
}

/// As the model may have it: without the folder, which loaders put in front with one slash or several.
std::string FolderGate::relative(const std::string &path) const
{
    const std::string start = m_model.substr(0, m_model.rfind('/') + 1);
    for (const std::string &folder : {start, m_folder})
        if (path.compare(0, folder.size(), folder) == 0)
            return path.substr(std::min(path.find_first_not_of('/', folder.size()), path.size()));
    return path;
}

bool FolderGate::isInside(const std::string &real) const
{
    return real.compare(0, m_folder.size(), m_folder) == 0;
}

/// Before anything is opened: opening a device or a pipe can do something already.
bool FolderGate::mayOpen(const std::string &path) const
{
    if (path == m_model)
        return true;
    struct stat status;
    const std::string real = realPath(path);
    if (real.empty() || stat(real.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    if (isInside(real))
        return LoaderList::isKnown(path.c_str(), true);
    if (m_refused.size() < importlimits::Troubles)
        m_refused.insert(relative(path));
    return false;
}

/// A descriptor of a plain file in the folder, or -1. What was asked for by path is asked for again once it is open:
/// in between the path may have been led elsewhere.
int FolderGate::openPlain(const std::string &path) const
{
    if (!mayOpen(path))
        return -1;
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    struct stat status;
    if (file >= 0 && fstat(file, &status) == 0 && S_ISREG(status.st_mode)
        && (path == m_model || isInside(placeOf(file))))
        return file;
    if (file >= 0)
        close(file);
    return -1;
}

bool FolderGate::Exists(const char *path) const
{
    return path && mayOpen(absolute(path));
}

Assimp::IOStream *FolderGate::Open(const char *path, const char *mode)
{
    if (!path || !mode || std::strpbrk(mode, "wa+"))
        return nullptr;
    const int descriptor = openPlain(absolute(path));
    struct stat status;
    FILE *opened = descriptor >= 0 && fstat(descriptor, &status) == 0 ? fdopen(descriptor, "rb") : nullptr;
    if (!opened) {
        if (descriptor >= 0)
            close(descriptor);
        return nullptr;
    }
    auto *file = new FolderFile(opened, size_t(status.st_size)); // the library brings it to Close()
    if (LoaderList::isText(path))
        file->readUtf16();
    return file;
}

void FolderGate::Close(Assimp::IOStream *file)
{
    delete file;
}
