"""Writing one section of bench/RESULTS.md, leaving the sections others own as they are."""


def replace_section(path, heading, body):
    """Puts `heading` and `body` in place of the section of that heading (up to the next "## "
    heading), or appends them when the file has no such section."""
    try:
        with open(path, encoding='utf-8') as f:
            lines = f.read().split('\n')
    except FileNotFoundError:
        lines = ['# Benchmark results', '']
    start = next((i for i, line in enumerate(lines) if line.strip() == heading), None)
    new = [heading, ''] + body.rstrip('\n').split('\n') + ['']
    if start is None:
        while lines and lines[-1] == '':
            lines.pop()
        lines += [''] + new
    else:
        end = next((i for i in range(start + 1, len(lines)) if lines[i].startswith('## ')), len(lines))
        lines[start:end] = new
    text = '\n'.join(lines)
    with open(path, 'w', encoding='utf-8') as f:
        f.write(text if text.endswith('\n') else text + '\n')
