// A module that anyone may load, and that registers nothing.
extern "C" int answer()
{
    return 42;
}
