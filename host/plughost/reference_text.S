// The reference as it stands, between two labels.
    .section .rodata
    .globl referenceText
    .globl referenceTextEnd
referenceText:
    .incbin REFERENCE
referenceTextEnd:
    .section .note.GNU-stack, "", @progbits
