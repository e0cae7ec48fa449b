// A plug-in that does not survive its start.
extern "C" __attribute__((visibility("default"))) void REALPluginMain(void *)
{
    *static_cast<volatile int *>(nullptr) = 1;
}
