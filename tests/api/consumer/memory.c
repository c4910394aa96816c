/* Prints the machine's memory; the first argument is the directory of the scanners. */
#include <stdio.h>
#include <stdlib.h>
#include <zuk.h>

int main(int argc, char** argv) {
    wchar_t home[4096];
    ZUKCtx* library = NULL;
    ZUKHwCtx* hardware = NULL;
    const wchar_t* bytes = NULL;
    if (argc != 2 || mbstowcs(home, argv[1], 4096) >= 4096) return 2;
    if (ZUK_init("consumer", NULL, NULL, NULL, home, &library) != 0) return 1;
    if (ZUK_hw_init(library, NULL, NULL, &hardware) == 0) {
        ZUK_hw_setopt(hardware, 3, 1);
        if (ZUK_hw_run(hardware) == 0 && ZUK_hw_get_value(hardware, 3, 0, L"TotalBytes", &bytes) == 0) {
            printf("%ls\n", bytes);
        }
        ZUK_hw_free(hardware);
    }
    return ZUK_free(library) == 0 && bytes != NULL ? 0 : 1;
}
