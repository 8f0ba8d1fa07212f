#pragma once

#include "config/layer.h"

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ks {

// Reads a configuration file as a row of records, byte for byte.
//
// A record ends at a comma or at a line end; neither belongs to it. A line ends at CR LF, at a lone LF or at
// a lone CR, so files from any system read alike, and an empty line gives an empty record. Blanks ahead of a
// record are skipped (a tab is an ordinary character); blanks behind its last character stay. A record that
// begins with a double quote runs to the next double quote or to the end of its line, whichever comes
// first; both quotes go, a comma between them belongs to the record, and whatever stands behind the closing
// quote up to the next comma or line end is dropped. Every other byte reaches the record unchanged, and a
// record may be of any length.
//
// Only a regular file is read: a directory, a FIFO or a device such as /dev/zero is refused at once, without
// waiting for a writer. A record too large to hold in memory ends the reading as a failure.
class RecordReader {
public:
    // Opens the file; false when it cannot be opened or is no regular file.
    bool open(const std::string& path);
    // Reads records from bytes already in memory, as from a file that holds them.
    void openBytes(std::string_view bytes);
    // No byte is left to read. A read that fails also ends the input; failed() tells the two apart.
    bool atEnd();
    // Reads the next record; false when the input failed on the way.
    bool read(std::string& record);
    // Where the record read last begins in the input, behind the blanks and the double quote ahead of it: a record
    // is the run of bytes from there on, of its own length.
    std::size_t recordStart() const { return recordStart_; }
    // The file could not be opened or a read failed.
    bool failed() const { return failed_; }
    // Why, in words: "it is a directory", "it is not a regular file", "out of memory" or the system's own
    // text ("No such file or directory").
    const std::string& reason() const { return reason_; }

private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    // Refills the buffer; false at the end of the file or on a failure.
    bool fill();
    bool readRecord(std::string& record);
    bool fail(std::string reason);
    bool available() { return pos_ < len_ || fill(); }
    void skipLineEnd();
    void skipToDelimiter();

    std::unique_ptr<std::FILE, Closer> file_;
    std::vector<char> buffer_;
    std::size_t pos_ = 0;
    std::size_t len_ = 0;
    std::size_t offset_ = 0; // bytes of the input ahead of the buffer
    std::size_t recordStart_ = 0;
    bool failed_ = false;
    std::string reason_;
};

// The lines of a file as the reader counts them, without their ends: CR LF, LF and CR each end a line, and
// the bytes behind the last line end make a line of their own.
std::vector<std::string_view> fileLines(std::string_view bytes);

// The records of one line, cut by the record reader. Each record is a view into the line.
std::vector<std::string_view> lineRecords(std::string_view line);

// The whole of a regular file, or why it could not be read, in the words of RecordReader::reason().
struct FileBytes {
    bool ok = false;
    std::string bytes;
    std::string reason;
};
FileBytes readRegularFile(const std::string& path);

// Opens a regular file for reading and gives its descriptor, or -1 and the reason. Non-blocking at first, so that
// a FIFO without a writer cannot hold the open up; the file type is known before a byte is read. On Windows the
// path goes to the system in UTF-16 and the long form, and a device (NUL, CON) is refused before it is opened.
int openRegularFile(const std::string& path, std::string& reason);
// Reads what is left of an open file.
FileBytes readAllOf(int fd);

} // namespace ks
