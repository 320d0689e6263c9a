// A library that exports nothing that anybody looks for.
extern "C" int hollow();
extern "C" int hollow()
{
    return 0;
}
