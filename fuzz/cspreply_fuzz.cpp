// The CSP reply framer and record decoder: any bytes as the reply to a command (the first
// byte picks the command and the quirks), fed to the upload reader in the pieces it asks
// for; each record it hands over goes through the record decoder as the line processing
// takes it.
#include <cstddef>
#include <cstdint>
#include <string>

#include "pipeline/scanlines.h"
#include "platform/csp2_protocol.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 1) return 0;
    csp::Quirks q;
    q.replyhead = (data[0] & 1) ? csp::ReplyHead::status : csp::ReplyHead::echo;
    q.extendedlength = (data[0] & 2) != 0;
    const uint8_t* p = data + 1;
    size_t n = size - 1;

    const csp::Scan s = csp::scanreply(p, n, (uint8_t)(data[0] >> 2), q);
    if (s.state == csp::Scan::complete && s.used > n) __builtin_trap();

    csp::UploadReader reader(q);
    size_t at = 0;
    while (at < n && reader.need() > 0) {
        const size_t take = std::min(reader.need(), n - at);
        reader.feed(p + at, take);
        at += take;
    }
    for (const auto& r : reader.records()) {
        // As csp2GetPacket hands it over: the record at the front of a longer buffer.
        std::string record(r.begin(), r.end());
        record.resize(256, '\0');
        try {
            const std::string barcode = recordbarcode(record);
            std::string datecode;
            recorddatecode(record, datecode);
            if (!shortfield(barcode)) (void)recordcanonical(barcode, datecode);
        } catch (const std::exception&) {
            // A record too short for its fields raises the runtime's fault, as in the run.
        }
    }
    return 0;
}
