"""Compiles scripts with rux, one action per machine with all its inputs declared.

WORKSPACE:

    local_repository(name = "rules_rux", path = "/usr/share/ruxcomp/bazel")
    load("@rules_rux//:defs.bzl", "local_rux")
    local_rux(name = "rux")

BUILD.bazel:

    load("@rules_rux//:defs.bzl", "rux_meta")
    rux_meta(name = "board", script = "main.rux", includes = ["//std:scripts"])
"""

def _rux_meta_impl(ctx):
    meta = ctx.actions.declare_file(ctx.label.name + ".meta")
    outputs = [meta]
    groups = {"meta": depset([meta])}
    arguments = ctx.actions.args()
    arguments.add("compile")
    arguments.add_all(ctx.attr.options)
    arguments.add("--output", meta)
    if ctx.attr.debug_meta:
        debug_meta = ctx.actions.declare_file(ctx.label.name + ".metad")
        outputs.append(debug_meta)
        groups["debug_meta"] = depset([debug_meta])
        arguments.add("--debug-meta", debug_meta)
    arguments.add("--")
    arguments.add(ctx.file.script)
    ctx.actions.run(
        executable = ctx.executable._rux,
        arguments = [arguments],
        inputs = [ctx.file.script] + ctx.files.includes,
        outputs = outputs,
        env = {"SOURCE_DATE_EPOCH": str(ctx.attr.time)},
        mnemonic = "RuxCompile",
        progress_message = "Compiling " + ctx.file.script.short_path,
    )
    return [DefaultInfo(files = depset(outputs)), OutputGroupInfo(**groups)]

rux_meta = rule(
    implementation = _rux_meta_impl,
    doc = "Makes NAME.meta, and NAME.metad if asked for. The same inputs give the same bytes.",
    attrs = {
        "script": attr.label(
            doc = "The main script.",
            mandatory = True,
            allow_single_file = True,
        ),
        "includes": attr.label_list(
            doc = "All files that it includes, directly or not.",
            allow_files = True,
        ),
        "debug_meta": attr.bool(doc = "Whether to make a debug meta file."),
        "options": attr.string_list(doc = "Further options of rux compile."),
        "time": attr.int(doc = "The time of creation in the files, in seconds since 1970."),
        "_rux": attr.label(
            default = "@rux//:rux",
            executable = True,
            allow_single_file = True,
            cfg = "exec",
        ),
    },
)

def _local_rux_impl(repository_ctx):
    path = repository_ctx.attr.path or repository_ctx.which("rux")
    if not path:
        fail("rux is not on the PATH; local_rux(path = ...) takes the path of another one")
    repository_ctx.symlink(path, "rux")
    repository_ctx.file("BUILD.bazel", 'exports_files(["rux"])\n')

local_rux = repository_rule(
    implementation = _local_rux_impl,
    doc = "The rux of this machine, as @rux//:rux. Its content is an input of every action.",
    attrs = {"path": attr.string(doc = "Where it is; without a path, the one on the PATH.")},
    environ = ["PATH"],
    local = True,
)
