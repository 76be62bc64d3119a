// Loaded into ippeveprinter before Avahi's library: a printer for tests is announced to nobody, and so needs
// neither the system's bus nor the service that announces. These are all of the library's functions that it calls.
#include <cstddef>

namespace {

char nobody;  // what pointers to things of the library point to

}  // namespace

extern "C" {

void *avahi_threaded_poll_new()
{
    return &nobody;
}

const void *avahi_threaded_poll_get(void *poll)
{
    return poll;
}

int avahi_threaded_poll_start(void *)
{
    return 0;
}

void avahi_threaded_poll_lock(void *)
{
}

void avahi_threaded_poll_unlock(void *)
{
}

void *avahi_client_new(const void *, int, void (*)(void *, int, void *), void *, int *)
{
    return &nobody;
}

int avahi_client_errno(void *)
{
    return 0;
}

const char *avahi_client_get_host_name_fqdn(void *)
{
    return "localhost";
}

void *avahi_entry_group_new(void *, void (*)(void *, int, void *), void *)
{
    return &nobody;
}

int avahi_entry_group_add_service_strlst(void *, int, int, int, const char *, const char *, const char *,
                                         const char *, unsigned short, void *)
{
    return 0;
}

int avahi_entry_group_add_service_subtype(void *, int, int, int, const char *, const char *, const char *,
                                          const char *)
{
    return 0;
}

int avahi_entry_group_commit(void *)
{
    return 0;
}

int avahi_entry_group_free(void *)
{
    return 0;
}

void *avahi_string_list_add_printf(void *, const char *, ...)
{
    return &nobody;
}

void avahi_string_list_free(void *)
{
}

}  // extern "C"
