#pragma once

#include <archive.h>
#include <archive_entry.h>

#include <string>
#include <vector>

// Puts archives together in memory.

struct ArchiveEntry {
    std::string name;
    std::string content;
    unsigned type = AE_IFREG;
};

// Sets the format, and the compression around it, of an archive that is about to be written.
using ArchiveForm = void (*)(archive*);

inline void zipForm(archive* writer) {
    archive_write_set_format_zip(writer);
}
inline void tarForm(archive* writer) {
    archive_write_set_format_ustar(writer);
}
inline void cpioForm(archive* writer) {
    archive_write_set_format_cpio_newc(writer);
}
inline void arForm(archive* writer) {
    archive_write_set_format_ar_svr4(writer);
}
inline void tarGzForm(archive* writer) {
    tarForm(writer);
    archive_write_add_filter_gzip(writer);
}
inline void tarXzForm(archive* writer) {
    tarForm(writer);
    archive_write_add_filter_xz(writer);
}
inline void tarZstForm(archive* writer) {
    tarForm(writer);
    archive_write_add_filter_zstd(writer);
}

inline std::string packArchive(ArchiveForm form, const std::vector<ArchiveEntry>& entries) {
    std::string bytes(8U << 20U, '\0');
    std::size_t used = 0;
    archive* writer = archive_write_new();
    form(writer);
    archive_write_open_memory(writer, bytes.data(), bytes.size(), &used);
    for (const ArchiveEntry& entry : entries) {
        archive_entry* header = archive_entry_new();
        archive_entry_set_pathname(header, entry.name.c_str());
        archive_entry_set_size(header, static_cast<la_int64_t>(entry.content.size()));
        archive_entry_set_filetype(header, entry.type);
        archive_entry_set_perm(header, 0644);
        if (entry.type == AE_IFLNK) archive_entry_set_symlink(header, "target");
        archive_write_header(writer, header);
        archive_write_data(writer, entry.content.data(), entry.content.size());
        archive_entry_free(header);
    }
    archive_write_close(writer);
    archive_write_free(writer);
    bytes.resize(used);
    return bytes;
}
