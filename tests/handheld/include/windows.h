// The handheld's functions about files, as far as platform/handheld/ calls them, over a folder of
// this machine: the root of the handheld's files (pretended_files.h). Names and numbers are the
// system's.
// NOLINTBEGIN(readability-identifier-naming)
#pragma once

#include <cstdint>
#include <cstdio>

using BOOL = int;
using DWORD = uint32_t;
using HANDLE = void *;
using HWND = void *;
struct WIN32_FIND_DATAW;

#define FALSE 0
#define MAX_PATH 260
#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(intptr_t{-1}))
#define INVALID_FILE_ATTRIBUTES 0xFFFFFFFFU
#define INVALID_SET_FILE_POINTER 0xFFFFFFFFU

#define GENERIC_READ 0x80000000U
#define GENERIC_WRITE 0x40000000U
#define FILE_SHARE_READ 1U
#define FILE_SHARE_WRITE 2U
#define CREATE_NEW 1U
#define OPEN_EXISTING 3U
#define FILE_BEGIN 0U

#define FILE_ATTRIBUTE_READONLY 0x01U
#define FILE_ATTRIBUTE_HIDDEN 0x02U
#define FILE_ATTRIBUTE_SYSTEM 0x04U
#define FILE_ATTRIBUTE_DIRECTORY 0x10U
#define FILE_ATTRIBUTE_ARCHIVE 0x20U
#define FILE_ATTRIBUTE_NORMAL 0x80U
#define FILE_ATTRIBUTE_TEMPORARY 0x100U

#define ERROR_FILE_NOT_FOUND 2U
#define ERROR_PATH_NOT_FOUND 3U
#define ERROR_ACCESS_DENIED 5U
#define ERROR_WRITE_PROTECT 19U
#define ERROR_SHARING_VIOLATION 32U
#define ERROR_HANDLE_DISK_FULL 39U
#define ERROR_NOT_SUPPORTED 50U
#define ERROR_FILE_EXISTS 80U
#define ERROR_DISK_FULL 112U
#define ERROR_INVALID_NAME 123U
#define ERROR_ALREADY_EXISTS 183U
#define ERROR_FILENAME_EXCED_RANGE 206U

extern "C" {
DWORD GetLastError();
BOOL SHGetSpecialFolderPath(HWND owner, wchar_t *path, int folder, BOOL create);

DWORD GetFileAttributesW(const wchar_t *name);
HANDLE CreateFileW(const wchar_t *name, DWORD access, DWORD share, void *security,
                   DWORD disposition, DWORD attributes, HANDLE model);
BOOL CloseHandle(HANDLE file);
BOOL MoveFileW(const wchar_t *name, const wchar_t *new_name);
BOOL DeleteFileW(const wchar_t *name);
HANDLE FindFirstFileW(const wchar_t *pattern, WIN32_FIND_DATAW *found);
BOOL FindNextFileW(HANDLE search, WIN32_FIND_DATAW *found);
BOOL FindClose(HANDLE search);
DWORD GetTempPathW(DWORD size, wchar_t *folder);
DWORD GetTempFileNameW(const wchar_t *folder, const wchar_t *prefix, DWORD number, wchar_t *name);

FILE *_wfopen(const wchar_t *name, const wchar_t *mode);
int _fileno(FILE *file);
BOOL FlushFileBuffers(HANDLE file);
DWORD SetFilePointer(HANDLE file, long distance, long *high, DWORD from);
BOOL SetEndOfFile(HANDLE file);
}
// NOLINTEND(readability-identifier-naming)
