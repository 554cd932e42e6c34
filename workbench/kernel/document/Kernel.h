#pragma once

#include <memory>

class nkObjectService;

namespace kernel {

class Document;
class MetadataService;

/// Owns what there is once a process: the document and the services that speak for it. Made on first use;
/// goes with the application object (a later use makes a new, empty one), or with the process where there is
/// none.
class Kernel
{
public:
    static Kernel &the();
    ~Kernel();

    Document &document() { return *m_document; }
    MetadataService &metadataService() { return *m_metadataService; }
    nkObjectService &objectService() { return *m_objectService; }

private:
    Kernel();
    static void end();

    // In the order in which they are made; they go in the opposite one.
    std::unique_ptr<nkObjectService> m_objectService;
    std::unique_ptr<Document> m_document;
    std::unique_ptr<MetadataService> m_metadataService;
};

} // namespace kernel
