/* objc_msgSend and its relatives, as code compiled for 32-bit macOS calls them, over the lookup of the runtime here.

   On entry the stack holds the return address and the arguments of the method: the receiver (for the _stret forms a
   hidden pointer before it; for the Super forms a struct objc_super * in its place) and the selector come first. Both
   systems pass arguments alike, so most methods are simply jumped to with the stack as it was found. */

        .text

/* A frame that the unwinder can walk, because the lookup may raise or run +initialize. It leaves the stack aligned to
   16 bytes, with room for a call's two arguments at its end. */
.macro enter_frame
        pushl   %ebp
        .cfi_def_cfa_offset 8
        .cfi_offset %ebp, -8
        movl    %esp, %ebp
        .cfi_def_cfa_register %ebp
        subl    $24, %esp
.endm

/* Ends the frame and goes on with `instruction`. What follows in the text still runs inside the frame. */
.macro leave_frame_and instruction:vararg
        .cfi_remember_state
        leave
        .cfi_def_cfa %esp, 4
        \instruction
        .cfi_restore_state
.endm

/* Looks up the method for the receiver and the selector that stand `at` so far from the frame: the method in eax, and
   whether it returns a small struct in edx. */
.macro look_up function, at
        movl    \at(%ebp), %eax
        movl    \at + 4(%ebp), %ecx
        movl    %eax, 0(%esp)
        movl    %ecx, 4(%esp)
        call    \function
.endm

/* The same for a struct objc_super *, in whose place its receiver is put. */
.macro look_up_super at
        look_up machorun_lookUpSuper, \at
        movl    \at(%ebp), %ecx
        movl    (%ecx), %ecx
        movl    %ecx, \at(%ebp)
.endm

.macro begin name
        .globl  \name
        .hidden \name
        .type   \name, @function
\name:
        .cfi_startproc
.endm

.macro finish name
        .cfi_endproc
        .size   \name, . - \name
.endm

begin machorun_msgSend
        enter_frame
        cmpl    $0, 8(%ebp)
        je      1f
        look_up machorun_lookUp, 8
        testl   %edx, %edx
        jnz     call_for_small_struct
        leave_frame_and jmp *%eax
1:      xorl    %eax, %eax                      /* nil answers zero, also as eight bytes */
        xorl    %edx, %edx
        leave_frame_and ret
finish machorun_msgSend

/* Floating-point results are on the FPU stack on both systems; only nil needs another answer. */
begin machorun_msgSend_fpret
        enter_frame
        cmpl    $0, 8(%ebp)
        je      1f
        look_up machorun_lookUp, 8
        leave_frame_and jmp *%eax
1:      fldz
        leave_frame_and ret
finish machorun_msgSend_fpret

/* Larger structs are returned through a hidden pointer on both systems; who is called takes it off the stack. As on
   macOS, nil leaves the struct as it was. */
begin machorun_msgSend_stret
        enter_frame
        cmpl    $0, 12(%ebp)
        je      1f
        look_up machorun_lookUp, 12
        leave_frame_and jmp *%eax
1:      leave_frame_and ret $4
finish machorun_msgSend_stret

begin machorun_msgSendSuper
        enter_frame
        look_up_super 8
        testl   %edx, %edx
        jnz     call_for_small_struct
        leave_frame_and jmp *%eax
finish machorun_msgSendSuper

begin machorun_msgSendSuper_stret
        enter_frame
        look_up_super 12
        leave_frame_and jmp *%eax
finish machorun_msgSendSuper_stret

/* Jumped to with a frame in place and the method in eax: calls it with a hidden pointer to eight bytes of this frame
   before its arguments, and returns those bytes in eax and edx. The caller's arguments are copied without knowing how
   many they are; 20 words are more than any method that returns so small a struct takes. */
#define ARGUMENT_WORDS 20
begin call_for_small_struct
        .cfi_def_cfa %ebp, 8
        .cfi_offset %ebp, -8
        movl    %esi, -4(%ebp)
        .cfi_offset %esi, -12
        movl    %edi, -8(%ebp)
        .cfi_offset %edi, -16
        subl    $96, %esp                       /* the hidden pointer and the words, rounded up to 16 bytes */
        leal    8(%ebp), %esi
        leal    4(%esp), %edi
        movl    $ARGUMENT_WORDS, %ecx
        rep movsl
        leal    -20(%ebp), %ecx
        movl    %ecx, 0(%esp)
        call    *%eax
        movl    -20(%ebp), %eax
        movl    -16(%ebp), %edx
        movl    -4(%ebp), %esi
        movl    -8(%ebp), %edi
        leave_frame_and ret
finish call_for_small_struct

        .section .note.GNU-stack, "", @progbits
