#include "AnswerPipe.h"
#include "Confinement.h"
#include "Import.h"

#include <cstdio>
#include <cstdlib>

#include <unistd.h>

/// nkImporter FILE [PARENT]
///
/// Reads a scene file and writes what is in it to the standard output, in the flat form. PARENT is the id of the
/// process that waits for the answer: when that ends, this one does. Exit status: 0 a scene was answered, 1 a reason
/// why there is none, 2 wrong use, importlimits::MemoryStatus out of memory.
int main(int argc, char **argv)
{
    if (argc < 2 || argc > 3) {
        std::fputs("usage: nkImporter FILE [PARENT]\n", stderr);
        return 2;
    }
    AnswerPipe pipe;
    Confinement::begin(argc == 3 ? std::atoi(argv[2]) : 0);
    const bool done = Import(argv[1], pipe).run();
    // Without tidying up: what the library has made of a damaged file is better left alone.
    _exit(done ? 0 : 1);
}
