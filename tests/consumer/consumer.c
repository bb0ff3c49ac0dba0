/* An application of the installed library: writes its H.323 settings as a
 * configuration message with the library's writer, parses the message into
 * a fresh image and checks that the settings arrived. Exit status 0 when
 * they did. */
#include <cfgparser.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

int main(void)
{
    static uint8_t message[4096];
    uint8_t *cursor = message + CFG_MSG_HEADER_SIZE;
    h323_cfg_t settings;
    cfg_image_t *image;
    int written;
    int ok;

    memset(&settings, 0, sizeof settings);
    settings.timetolive = 42;
    strcpy(settings.gatekeeperip, "10.20.0.5");
    written = h323_save(&cursor, &settings);
    message[CFG_MSG_BODY_LENGTH_OFFSET] = (uint8_t)written;
    message[CFG_MSG_BODY_LENGTH_OFFSET + 1] = (uint8_t)(written >> 8);

    image = calloc(1, sizeof *image);
    if (image == NULL)
        return 2;
    image->max_ports = CFG_MAX_PORTS;
    all_parser(image, message);
    ok = written > 0 && image->h323.timetolive == 42 && strcmp(image->h323.gatekeeperip, "10.20.0.5") == 0;
    printf("consumer: %d bytes written, timetolive %d, gatekeeperip %s\n", written,
           (int)image->h323.timetolive, image->h323.gatekeeperip);
    free(image);
    return ok ? 0 : 1;
}
