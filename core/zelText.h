#pragma once

namespace ZEL {

/// A null text counts as an empty one.
inline const char* orEmpty(const char* text)
{
    return text ? text : "";
}

} // namespace ZEL
