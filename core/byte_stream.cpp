#include "core/byte_stream.h"

#include "core/check.h"
#include "core/errors.h"

#include <cstring>

// Reads and writes until one fails; negative: never.
static struct Faults {
    int32_t read_countdown;
    int32_t write_countdown;
} faults = {-1, -1};

namespace {

bool read_fault_due() {
    if (faults.read_countdown < 0) {
        return false;
    }
    return faults.read_countdown-- == 0;
}

// Stays at 0 once reached: a full disk stays full.
bool write_fault_due() {
    if (faults.write_countdown <= 0) {
        return faults.write_countdown == 0;
    }
    --faults.write_countdown;
    return false;
}

int write_buffer(ByteOutput *out) {
    CHECK(out->fill <= k_byte_buffer_size);
    const uint32_t n = out->fill;
    out->fill = 0;
    if (n == 0) {
        return 0;
    }
    if (write_fault_due() || fwrite(out->bytes, 1, n, out->file) < n) {
        return report_error(k_cannot_write_web);
    }
    return 0;
}

}  // namespace

void byte_output_bind(ByteOutput *out, FILE *file) {
    CHECK(file != nullptr);
    setvbuf(file, nullptr, _IONBF, 0);
    out->file = file;
    out->fill = 0;
}

void byte_input_bind(ByteInput *in, FILE *file) {
    CHECK(file != nullptr);
    setvbuf(file, in->read_ahead, _IOFBF, k_read_ahead_size);
    in->file = file;
    in->next = 1;
    in->end = 1;
    in->bytes[0] = 0;
    in->bytes[1] = 0;
    in->ended = false;
    in->failed = false;
}

int byte_output_put(ByteOutput *out, uint8_t byte) {
    if (out->fill >= k_byte_buffer_size) {
        const int r = write_buffer(out);
        if (r < 0) {
            return r;
        }
    }
    out->bytes[out->fill++] = byte;
    return 0;
}

int byte_output_write_through(ByteOutput *out, const char *bytes, uint32_t n) {
    while (n > 0) {
        if (out->fill >= k_byte_buffer_size) {
            const int r = write_buffer(out);
            if (r < 0) {
                return r;
            }
        }
        const uint32_t room = k_byte_buffer_size - out->fill;
        const uint32_t taken = n < room ? n : room;
        memcpy(out->bytes + out->fill, bytes, taken);
        out->fill += taken;
        bytes += taken;
        n -= taken;
    }
    return 0;
}

int byte_output_flush(ByteOutput *out) {
    int r = write_buffer(out);
    if (r == 0 && fflush(out->file) != 0) {
        r = report_error(k_cannot_write_web);
    }
    return r;
}

bool byte_input_fill(ByteInput *in) {
    if (in->ended) {
        return false;
    }
    CHECK(in->next >= in->end);
    const bool fault = read_fault_due();
    in->bytes[0] = in->bytes[in->end - 1];
    const size_t n = fault ? 0 : fread(in->bytes + 1, 1, k_byte_buffer_size, in->file);
    if (n == 0) {
        in->ended = true;
        if (fault || feof(in->file) == 0) {
            in->failed = true;
            report_error(k_cannot_read_web);
        }
        return false;
    }
    in->next = 1;
    in->end = static_cast<uint32_t>(n + 1);
    in->bytes[in->end] = 0;
    return true;
}

// A bare LF stays the next byte while the CR that comes before it takes the last one's place.
int byte_input_next(ByteInput *in) {
    if (in->next == in->end && !byte_input_fill(in)) {
        return 0;
    }
    uint8_t *last = &in->bytes[in->next - 1];
    if (last[1] == '\n' && *last != '\r') {
        *last = '\r';
        return '\r';
    }
    ++in->next;
    return last[1];
}

void byte_stream_fail_read_after(int32_t countdown) {
    faults.read_countdown = countdown;
}

void byte_stream_fail_write_after(int32_t countdown) {
    faults.write_countdown = countdown;
}
