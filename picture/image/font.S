# SPDX-License-Identifier: MIT
# The bytes of the font file that the build names.
    .section .rodata
    .balign 16
    .global picture_font_begin
    .global picture_font_end
picture_font_begin:
    .incbin PICTURE_FONT_FILE
picture_font_end:
    .section .note.GNU-stack, "", %progbits
