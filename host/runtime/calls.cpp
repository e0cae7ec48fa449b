#include "host/runtime/calls.h"

#include <cstring>
#include <memory>

#include "host/exception.h"
#include "host/runtime/exceptions.h"
#include "host/runtime/ledger.h"
#include "host/runtime/objects.h"
#include "host/runtime/overloads.h"
#include "host/runtime/passing.h"

namespace host::runtime {

namespace {

Value checkedResult(const Declaration &declaration, Value result)
{
    const DeclaredType &type = declaration.result;
    bool isHandle = type.isArray || type.passing == Passing::Object || type.passing == Passing::String;
    std::string why;
    if (isHandle && !result.isNullHandle() && !rankOf(type, result, &why))
        noteFault(declaration.text() + ": the result " + why);
    return result;
}

// What a closure of libffi calls back with. Made once for each method of host code and never freed.
struct BodyFunction {
    Declaration declaration;
    bool isShared;
    HostMethod::Body body;
    ffi_cif cif;
    std::vector<ffi_type *> types;
};

Value runBody(const BodyFunction &function, void **slots)
{
    size_t next = 0;
    Value self;
    if (!function.isShared)
        self = Value::borrowHandle(*static_cast<void **>(slots[next++]));
    Arguments arguments;
    for (const Parameter &parameter : function.declaration.parameters) {
        Slot slot;
        memcpy(&slot, slots[next], ffiTypeOf(parameter.type)->size);
        arguments.push_back(receive(parameter.type, slot, false));
        ++next;
    }
    return function.body(self, arguments);
}

// The caller of a body is a plug-in or libffi: what the body throws in the host's own terms becomes a pending
// exception.
void bodyCalled(ffi_cif *cif, void *result, void **slots, void *user)
{
    auto &function = *static_cast<BodyFunction *>(user);
    Slot slot{};
    try {
        Value value = runBody(function, slots);
        std::string why;
        if (function.declaration.result.passing != Passing::Nothing) {
            if (!rankOf(function.declaration.result, value, &why))
                throw TypeError("the result " + why);
            std::deque<Value> kept;
            pass(function.declaration.result, value, slot, kept);
            bool isHandle = ffiTypeOf(function.declaration.result) == &ffi_type_pointer;
            if (Handle *handle = isHandle ? find(slot.pointer) : nullptr)
                lock(*handle);
        }
    } catch (const Exception &exception) {
        for (const RaisedException &raised : exception.raised())
            raiseObject(*static_cast<ObjectHandle *>(find(raised.object.handle())));
    } catch (const CallError &error) {
        raiseException("TypeMismatchException", error.what());
    }
    if (cif->rtype == &ffi_type_void)
        return;
    if (cif->rtype->size < sizeof(ffi_arg))
        *static_cast<ffi_arg *>(result) = slot.word;
    else
        memcpy(result, &slot, cif->rtype->size);
}

} // namespace

Value callFunction(void *function, const Declaration &declaration, const Value &self, const Arguments &arguments)
{
    std::deque<Value> kept;
    std::vector<ffi_type *> types;
    std::vector<Slot> slots(arguments.size() + 1);
    std::vector<void *> places;
    if (!self.isNil()) {
        slots[0].pointer = self.handle();
        types.push_back(&ffi_type_pointer);
        places.push_back(&slots[0]);
    }
    for (size_t i = 0; i < arguments.size(); ++i) {
        const DeclaredType &type = declaration.parameters[i].type;
        pass(type, arguments[i], slots[i + 1], kept);
        types.push_back(ffiTypeOf(type));
        places.push_back(&slots[i + 1]);
    }
    ffi_cif cif;
    if (ffi_prep_cif(&cif, FFI_DEFAULT_ABI, unsigned(types.size()), ffiTypeOf(declaration.result), types.data()) !=
        FFI_OK)
        throw CallError(declaration.text() + ": cannot be called");
    Slot result{};
    ffi_call(&cif, FFI_FN(function), &result, places.data());
    return checkedResult(declaration, receive(declaration.result, result, true));
}

void *functionFor(const Declaration &declaration, bool isShared, const HostMethod::Body &body)
{
    // Never freed, as code may keep the pointer; listed, because no leak checker looks into closures.
    static auto *functions = new std::vector<BodyFunction *>;
    auto *function = new BodyFunction{declaration, isShared, body, {}, {}};
    functions->push_back(function);
    if (!isShared)
        function->types.push_back(&ffi_type_pointer);
    for (const Parameter &parameter : declaration.parameters)
        function->types.push_back(ffiTypeOf(parameter.type));
    void *code = nullptr;
    auto *closure = static_cast<ffi_closure *>(ffi_closure_alloc(sizeof(ffi_closure), &code));
    if (!closure ||
        ffi_prep_cif(&function->cif, FFI_DEFAULT_ABI, unsigned(function->types.size()), ffiTypeOf(declaration.result),
                     function->types.data()) != FFI_OK ||
        ffi_prep_closure_loc(closure, &function->cif, bodyCalled, function, code) != FFI_OK)
        throw CallError(declaration.text() + ": no function can be made for it");
    return code;
}

Declaration setterDeclaration(const Declaration &getter)
{
    Declaration setter = getter;
    setter.assigns = true;
    setter.parameters.push_back({"value", getter.result});
    setter.result = DeclaredType();
    return setter;
}

} // namespace host::runtime
