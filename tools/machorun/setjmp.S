/* setjmp and longjmp over the registers that a call preserves. The frame of the caller is all that is kept: the image's
   own setjmp has room for 18 words, and reads none of them. */

        .text
        .globl  machorun_setjmp, machorun_longjmp
        .hidden machorun_setjmp, machorun_longjmp
        .type   machorun_setjmp, @function
        .type   machorun_longjmp, @function

machorun_setjmp:
        movl    4(%esp), %ecx
        movl    %ebx, 0(%ecx)
        movl    %esi, 4(%ecx)
        movl    %edi, 8(%ecx)
        movl    %ebp, 12(%ecx)
        leal    4(%esp), %edx                   /* the stack as it is after the return */
        movl    %edx, 16(%ecx)
        movl    (%esp), %edx
        movl    %edx, 20(%ecx)
        xorl    %eax, %eax
        ret
        .size   machorun_setjmp, . - machorun_setjmp

machorun_longjmp:
        movl    4(%esp), %ecx
        movl    8(%esp), %eax
        movl    0(%ecx), %ebx
        movl    4(%ecx), %esi
        movl    8(%ecx), %edi
        movl    12(%ecx), %ebp
        movl    16(%ecx), %esp
        jmp     *20(%ecx)
        .size   machorun_longjmp, . - machorun_longjmp

        .section .note.GNU-stack, "", @progbits
