# shellcheck shell=bash
# SPDX-FileCopyrightText: 2026 Tidewell
# SPDX-License-Identifier: GPL-3.0-or-later
# Completion of lumora-cli for bash, made by the target cli-documents.

_lumora_cli() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}
    local option=$previous
    # bash splits --format=webp into three words.
    if [[ $word == = ]]; then
        word=
    elif [[ $previous == = ]]; then
        option=${COMP_WORDS[COMP_CWORD-2]}
    fi
    local values=
    compopt +o default +o filenames 2>/dev/null
    case $option in
    -f | --format) values="webp webpLossless jpeg png heic original" ;;
    -q | --quality) return ;;
    --resize) values="maxWidth maxHeight longestEdge none" ;;
    --max-pixels) return ;;
    -o | --output-dir)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$word")
        return
        ;;
    --prefix) return ;;
    --suffix) return ;;
    --existing) values="replace ask skip" ;;
    -j | --jobs) return ;;
    --history-files) return ;;
    --history-days) return ;;
    *)
        if [[ $word != -* ]]; then
            compopt -o default 2>/dev/null
            COMPREPLY=()
            return
        fi
        values="-f --format
            -q --quality
            --resize
            --max-pixels
            --srgb --no-srgb
            --remove-profile --no-remove-profile
            --remove-metadata --no-remove-metadata
            -o --output-dir
            --prefix
            --suffix
            --existing
            --trash-original
            --keep-time --no-keep-time
            --trash-replaced --no-trash-replaced
            --skip-optimized
            --only-smaller
            --keep-folders
            -j --jobs
            -n --dry-run
            --json
            --quiet
            --record-stats
            --history --no-history
            --clear
            --history-files
            --history-days
            --version
            -h --help"
        ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$values" -- "$word")
}

complete -F _lumora_cli lumora-cli
