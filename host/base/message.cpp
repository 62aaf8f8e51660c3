#include "base/message.h"

namespace shading {

std::string messageText(const Message& message)
{
    const std::string place = message.file + ":" + std::to_string(message.line);
    if (!message.isError)
        return place + ": warning: " + message.text;
    return place + ":" + std::to_string(message.column) + ": error: " + message.text;
}

} // namespace shading
