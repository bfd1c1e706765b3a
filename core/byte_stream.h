// Buffered bytes to and from a file, 2,048 at a time. Output has no other buffer: the C library's
// own is switched off, so that a failed write is seen where it happens. Input has the C library
// read ahead, because a system call costs more than tokenizing what it brings.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstring>

constexpr uint32_t k_byte_buffer_size = 2048;
constexpr uint32_t k_read_ahead_size = 65536;

struct ByteOutput {
    FILE *file;
    uint32_t fill;
    uint8_t bytes[k_byte_buffer_size];
};

struct ByteInput {
    FILE *file;
    uint32_t next;  // index of the byte to hand out next; the one before it was handed out last
    uint32_t end;   // index behind the last valid byte, where a 0 stands
    bool ended;
    bool failed;                                    // ended by a read error
    uint8_t bytes[1 + k_byte_buffer_size + 1 + 8];  // a word can be read behind the 0
    char read_ahead[k_read_ahead_size];             // the C library's, until the file is closed
};

// Binds a stream to an open file at its start. The file stays the caller's.
void byte_output_bind(ByteOutput *out, FILE *file);
void byte_input_bind(ByteInput *in, FILE *file);

// 0, or -4 when a full buffer could not be written, which is then shown. (What does not fit into
// the buffer goes through byte_output_write_through().)
int byte_output_put(ByteOutput *out, uint8_t byte);
int byte_output_write_through(ByteOutput *out, const char *bytes, uint32_t n);
inline int byte_output_write(ByteOutput *out, const char *bytes, uint32_t n) {
    if (n > k_byte_buffer_size - out->fill) {
        return byte_output_write_through(out, bytes, n);
    }
    memcpy(out->bytes + out->fill, bytes, n);
    out->fill += n;
    return 0;
}

// The same for the first n of 16 bytes, without a call where all 16 have room.
inline int byte_output_write_short(ByteOutput *out, const char (&bytes)[16], uint32_t n) {
    if (sizeof bytes > k_byte_buffer_size - out->fill) {
        return byte_output_write_through(out, bytes, n);
    }
    memcpy(out->bytes + out->fill, bytes, sizeof bytes);
    out->fill += n;
    return 0;
}

// Writes what is left and makes sure that the file took it; 0, or -4, which is then shown.
int byte_output_flush(ByteOutput *out);

// The next byte, or 0 at the end of the input. A bare LF comes as CR, LF. A read error is shown
// (-5) and counts as the end.
int byte_input_next(ByteInput *in);

// Fills the buffer, which is used up. False at the end.
bool byte_input_fill(ByteInput *in);

// ---- Faults, for tests --------------------------------------------------------------------------

// Makes the read (write) after `countdown` further ones fail: a read as an error, a write by
// writing nothing. Negative turns the fault off. A write fault stays until it is turned off.
void byte_stream_fail_read_after(int32_t countdown);
void byte_stream_fail_write_after(int32_t countdown);
