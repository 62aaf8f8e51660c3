#include "zelCore.h"

#include <cstdio>

namespace ZEL {

struct StatusStr::ErrorRecord {
    std::string message;
    bool isError; ///< False only when the message was given as null.
};

namespace {

/// The size of a formatted message in bytes, with the terminator.
constexpr std::size_t kFormattedSize = 1024;

} // namespace

StatusStr::StatusStr(const char* message)
{
    setErrorString(message);
}

StatusStr::StatusStr(const char* format, const char* arg1, const char* arg2)
{
    if (!format)
        return;
    if (!arg1) {
        setErrorString(format);
        return;
    }
    char text[kFormattedSize];
    std::snprintf(text, sizeof(text), format, arg1, arg2);
    setErrorString(text);
}

StatusStr::StatusStr(const StatusStr& other)
{
    if (other.m_error)
        setErrorString(other.getErrorString());
}

// Contract: no guard against assigning a status to itself; it is cleared.
// NOLINTNEXTLINE(bugprone-unhandled-self-assignment)
StatusStr& StatusStr::operator=(const StatusStr& other)
{
    clearError();
    if (other.m_error)
        setErrorString(other.getErrorString());
    return *this;
}

StatusStr::~StatusStr()
{
    clearError();
}

bool StatusStr::operator!() const
{
    return m_error && m_error->isError;
}

const char* StatusStr::getErrorString() const
{
    return m_error ? m_error->message.c_str() : "";
}

void StatusStr::setErrorString(const char* message)
{
    // Made before the old record is freed: message may point into it.
    auto* const record = new ErrorRecord{message ? message : "", message != nullptr};
    clearError();
    m_error = record;
}

void StatusStr::clearError()
{
    delete m_error;
    m_error = nullptr;
}

} // namespace ZEL
