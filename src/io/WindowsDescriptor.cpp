// SPDX-License-Identifier: MIT
//
// Files as Windows has them, over the descriptors of its C runtime: a caller can make those.
#include "io/Descriptor.h"

#include <climits>

#include <cerrno>
#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <string>
#include <sys/stat.h>
#include <windows.h>

namespace IO::detail {

namespace {

// Bytes are never translated, neither line ends nor Ctrl-Z.
int OpenFlags(FileMode mode, unsigned access) {
    int flags = _O_BINARY | _O_NOINHERIT;
    switch (mode) {
    case FileMode::Append: flags |= _O_CREAT | _O_APPEND; break;
    case FileMode::CreateNew: flags |= _O_CREAT | _O_EXCL; break;
    case FileMode::Create:
    case FileMode::OpenOrCreate: flags |= _O_CREAT; break;
    case FileMode::Open:
    case FileMode::Truncate: break;
    }
    // Emptying a file takes a descriptor that may write, whatever the stream may do.
    if (access == 3 || (access == 1 && Empties(mode))) return flags | _O_RDWR;
    return flags | (access == 2 ? _O_WRONLY : _O_RDONLY);
}

// The system locks by itself, from opening to closing, against everybody.
int ShareFlag(unsigned share) {
    switch (share) {
    case 0: return _SH_DENYRW;
    case 1: return _SH_DENYWR;
    case 2: return _SH_DENYRD;
    default: return _SH_DENYNO;
    }
}

// Names are UTF-8, as all texts are here, whatever code page the system has. Returns an empty text
// for what is no UTF-8.
std::wstring WideName(const char* name) {
    const int size = ::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, name, -1, nullptr, 0);
    if (size < 1) return {};
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    ::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, name, -1, wide.data(), size);
    wide.pop_back();  // the NUL
    return wide;
}

// Pipes and terminals take a position, and nothing comes of it.
bool IsRegular(int descriptor) {
    const auto handle = reinterpret_cast<HANDLE>(::_get_osfhandle(descriptor));
    return ::GetFileType(handle) == FILE_TYPE_DISK;
}

}  // namespace

OpenedDescriptor OpenDescriptor(const char* name, FileMode mode, unsigned access, unsigned share) {
    const std::wstring wide = WideName(name);
    if (wide.empty()) return {-1, *name == '\0' ? ENOENT : EINVAL, false};
    int descriptor = -1;
    const int error = ::_wsopen_s(&descriptor, wide.c_str(), OpenFlags(mode, access),
                                  ShareFlag(share), _S_IREAD | _S_IWRITE);
    if (error != 0) return {-1, error, false};
    return {descriptor, 0, IsRegular(descriptor)};
}

// The runtime's own function may go on saying that a file has ended when it has grown since.
int ReadDescriptor(int descriptor, unsigned char* buffer, int count) {
    const auto handle = reinterpret_cast<HANDLE>(::_get_osfhandle(descriptor));
    DWORD done = 0;
    if (::ReadFile(handle, buffer, static_cast<DWORD>(count), &done, nullptr) == 0) {
        return ::GetLastError() == ERROR_BROKEN_PIPE ? 0 : -1;  // a pipe that nobody writes to ends
    }
    return static_cast<int>(done);
}

int WriteDescriptor(int descriptor, const unsigned char* buffer, int count) {
    return ::_write(descriptor, buffer, static_cast<unsigned>(count));
}

// A position that `long`, of 32 bits here, cannot hold is none.
long SeekDescriptor(int descriptor, long offset, Whence whence) {
    if (!IsRegular(descriptor)) return -1;
    const int origin = whence == Whence::End       ? SEEK_END
                       : whence == Whence::Current ? SEEK_CUR
                                                   : SEEK_SET;
    const long long before = ::_lseeki64(descriptor, 0, SEEK_CUR);
    const long long position = ::_lseeki64(descriptor, offset, origin);
    if (position <= LONG_MAX) return static_cast<long>(position);
    ::_lseeki64(descriptor, before, SEEK_SET);
    return -1;
}

bool ResizeDescriptor(int descriptor, long length) { return ::_chsize_s(descriptor, length) == 0; }

bool CommitDescriptor(int descriptor) {
    // For a pipe, this would wait until all of it is read.
    if (!IsRegular(descriptor)) return true;
    // What may not be written to has nothing to commit.
    return ::_commit(descriptor) == 0 || errno == EBADF || errno == EACCES;
}

bool CloseDescriptor(int descriptor) { return ::_close(descriptor) == 0; }

}  // namespace IO::detail
