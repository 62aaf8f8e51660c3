// The macros of Windows' own header leave the library's headers alone.
#include <windows.h>
#include <zel.h>

int main()
{
    const ZEL::Namable name("a name");
    return name == ZEL::Namable("a name") ? 0 : 1;
}
