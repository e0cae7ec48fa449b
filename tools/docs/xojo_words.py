"""The words of the host's language, which the pages show in colours. Behind a dot every word is a name."""

KEYWORDS = """
    AddHandler AddressOf And Array As Assigns Break ByRef ByVal Call Case Catch Class Const Continue Declare Delegate Dim
    Do DownTo Each Else ElseIf End Enum Event Exception Exit Extends Finally For Function Global GoTo Handles If Implements
    In Inherits Interface Is IsA Lib Loop Me Mod Module Namespace New Next Not Optional Or ParamArray Private Property Protected
    Public Raise RaiseEvent Redim RemoveHandler Return Select Self Shared Soft Static Step Structure Sub Super Then To Try
    Until Using WeakAddressOf Wend While With Xor
""".split()

CONSTANTS = ["True", "False", "Nil"]

TYPES = """
    Boolean Byte Color Currency Date Dictionary Double FolderItem Int8 Int16 Int32 Int64 Integer MemoryBlock NSExceptionKTZ
    NSUserDefaultsKTZ Object OutOfMemoryException RuntimeException Single String UInt8 UInt16 UInt32 UInt64
    UnsupportedOperationException Variant
""".split()

# What a program calls without an object in front.
STATEMENTS = ["Assert", "MsgBox", "Print"]
