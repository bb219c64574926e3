/// Version that every module exports. The executable rejects a module of another version.
extern "C" {
[[gnu::visibility("default")]] extern const char lumowattVersion[];
const char lumowattVersion[] = LUMOWATT_VERSION;
}
