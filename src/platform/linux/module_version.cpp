/// By which the executable knows a module of its own version. Every module has it.
extern "C" {
[[gnu::visibility("default")]] extern const char lumowattVersion[];
const char lumowattVersion[] = LUMOWATT_VERSION;
}
