// The rights of a file that is replaced by another.
#pragma once

#include <cstdio>
#include <string>

#include "files/file_system.h"

namespace q40 {

// Gives the open file `path` owner, group and permissions of an old one, as far as the program may:
// root keeps the owner, a member keeps the group. Rights that it may not keep are no failure, but
// nobody gets in who could not before. False, with the reason in errno, when the rights cannot be
// kept although the file system knows them.
bool KeepRights(FileSystem& system, const FileRights& old, std::FILE* file,
                const std::string& path);

}  // namespace q40
