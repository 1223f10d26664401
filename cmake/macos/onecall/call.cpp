// Declared by hand, so that a missing function is found by the linker, not for lack of a header.
extern "C" int CALL();

int main()
{
    return CALL();
}
