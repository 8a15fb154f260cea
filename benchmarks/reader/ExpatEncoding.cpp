// SPDX-License-Identifier: MIT
#include "reader/ExpatEncoding.h"

#include <cstdint>
#include <iconv.h>

namespace bench {

int XMLCALL MapEncoding(void* /*unused*/, const XML_Char* name, XML_Encoding* encoding) {
    constexpr int kNoCharacter = -1;
    const iconv_t converter = iconv_open("UTF-32LE", name);
    // It returns minus one, as a pointer.
    if (reinterpret_cast<std::intptr_t>(converter) == -1) return XML_STATUS_ERROR;
    for (int byte = 0; byte <= 0xFF; ++byte) {
        char source = static_cast<char>(byte);
        unsigned char code[4] = {};
        char* sourceAt = &source;
        char* codeAt = reinterpret_cast<char*>(code);
        std::size_t sourceLeft = 1, codeLeft = sizeof code;
        iconv(converter, nullptr, nullptr, nullptr, nullptr);
        iconv(converter, &sourceAt, &sourceLeft, &codeAt, &codeLeft);
        const bool isCharacter = sourceLeft == 0 && codeLeft == 0;
        encoding->map[byte] = isCharacter ? code[1] << 8 | code[0] : kNoCharacter;
    }
    iconv_close(converter);
    encoding->data = nullptr;
    encoding->convert = nullptr;
    encoding->release = nullptr;
    return XML_STATUS_OK;
}

}  // namespace bench
