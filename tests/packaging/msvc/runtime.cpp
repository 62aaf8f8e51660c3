// What Microsoft's linker puts into each program and DLL, and what libc++ has outside of its
// headers, as far as the library and the programs of run.sh need it. The rest is in the DLLs of the
// run-time library, which are Wine's. For one thread; PROGRAM is defined for a program, not for a
// DLL.

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <stdexcept>
#include <string>
#include <system_error>
#include <typeinfo>

extern "C" {
int _fltused = 1;

// Objects of type information begin with this table, which nothing reads.
void* typeInfoTable[1] __asm__("??_7type_info@@6B@") = {nullptr};

void __std_terminate()
{
    std::abort();
}

#undef printf
int printf(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int count = __stdio_common_vfprintf(0, __acrt_iob_func(1), format, nullptr, arguments);
    va_end(arguments);
    return count;
}
int fprintf(FILE* file, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int count = __stdio_common_vfprintf(0, file, format, nullptr, arguments);
    va_end(arguments);
    return count;
}
int snprintf(char* text, std::size_t size, const char* format, ...)
{
    constexpr unsigned long long kStandardSnprintf = 2; // The result and the end as in C99.
    va_list arguments;
    va_start(arguments, format);
    const int count =
        __stdio_common_vsprintf(kStandardSnprintf, text, size, format, nullptr, arguments);
    va_end(arguments);
    return count;
}
}

void* operator new(std::size_t size)
{
    if (void* const memory = std::malloc(size ? size : 1))
        return memory;
    std::abort();
}
void* operator new[](std::size_t size)
{
    return operator new(size);
}
void operator delete(void* memory) noexcept
{
    std::free(memory);
}
void operator delete[](void* memory) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace std {

exception::~exception() noexcept {}
const char* exception::what() const noexcept
{
    return "exception";
}
bad_alloc::bad_alloc() noexcept {}
bad_alloc::~bad_alloc() noexcept {}
const char* bad_alloc::what() const noexcept
{
    return "bad_alloc";
}
bad_array_new_length::bad_array_new_length() noexcept {}
bad_array_new_length::~bad_array_new_length() noexcept {}
const char* bad_array_new_length::what() const noexcept
{
    return "bad_array_new_length";
}

inline __libcpp_refstring::__libcpp_refstring(const char* text) : __imp_(strdup(text)) {}
inline __libcpp_refstring::__libcpp_refstring(const __libcpp_refstring& other) noexcept
    : __imp_(strdup(other.__imp_))
{
}
inline __libcpp_refstring::~__libcpp_refstring()
{
    free(const_cast<char*>(__imp_));
}
logic_error::logic_error(const char* text) : __imp_(text) {}
logic_error::logic_error(const logic_error& other) noexcept : __imp_(other.__imp_) {}
logic_error::~logic_error() noexcept {}
const char* logic_error::what() const noexcept
{
    return __imp_.c_str();
}
length_error::~length_error() noexcept {}
out_of_range::~out_of_range() noexcept {}

const char* type_info::name() const noexcept
{
    return __data.__decorated_name;
}
int type_info::__compare(const type_info& other) const noexcept
{
    return std::strcmp(name(), other.name());
}

inline namespace __1 {
size_t __next_prime(size_t number)
{
    for (;; ++number) {
        size_t divisor = 2;
        while (divisor * divisor <= number && number % divisor != 0)
            ++divisor;
        if (divisor * divisor > number)
            return number;
    }
}
string to_string(unsigned long number)
{
    string text;
    do
        text.insert(text.begin(), static_cast<char>('0' + number % 10));
    while ((number /= 10) != 0);
    return text;
}

/// Asked where a module cannot be loaded: not here.
const error_category& system_category() noexcept
{
    std::abort();
}
} // namespace __1

} // namespace std

namespace {

using Function = void (*)();
constexpr std::size_t kMost = 4096;
Function g_atEnd[kMost];
std::size_t g_count = 0;

#pragma section(".CRT$XCA", long, read)
#pragma section(".CRT$XCZ", long, read)
__declspec(allocate(".CRT$XCA")) Function firstInitialiser[] = {nullptr};
__declspec(allocate(".CRT$XCZ")) Function lastInitialiser[] = {nullptr};

// The linker sorts the sections by their names: static objects lie between these two.
void initialise()
{
    for (Function* each = firstInitialiser + 1; each < lastInitialiser; ++each) {
        if (*each)
            (*each)();
    }
}
void finish()
{
    while (g_count > 0)
        g_atEnd[--g_count]();
}

} // namespace

/// Each module's own: called when the module goes.
extern "C" int atexit(Function function)
{
    if (g_count == kMost)
        std::abort();
    g_atEnd[g_count++] = function;
    return 0;
}

#if defined(PROGRAM)
int main(int argc, char** argv);
extern "C" {
int _configure_narrow_argv(int mode);
void start()
{
    _configure_narrow_argv(1);
    initialise();
    const int result = main(*__p___argc(), *__p___argv());
    finish();
    std::exit(result);
}
}
#else
extern "C" int start(void* /*module*/, unsigned long reason, void* /*reserved*/)
{
    constexpr unsigned long kUnloaded = 0;
    constexpr unsigned long kLoaded = 1;
    if (reason == kLoaded)
        initialise();
    else if (reason == kUnloaded)
        finish();
    return 1;
}
#endif
