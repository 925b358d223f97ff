// The reference engine's decisions in qub-filter-check's format:
//   node decide.mjs LIST... < REQUESTS
// REQUESTS one a line as URL<TAB>SOURCE-PAGE-URL<TAB>TYPE; prints
// "block<TAB>FILTER", "allow<TAB>@@FILTER" or "allow" for each.
import { readFileSync } from 'node:fs';
import { createInterface } from 'node:readline';
import { FiltersEngine, Request } from '@ghostery/adblocker';

const engine = FiltersEngine.parse(
  process.argv.slice(2).map((path) => readFileSync(path, 'utf8')).join('\n'),
  { loadCosmeticFilters: false, debug: true, enableOptimizations: false },
);
const types = {
  subdocument: 'sub_frame', document: 'main_frame', popup: 'other',
};
const out = [];
for await (const line of createInterface({ input: process.stdin })) {
  const [url, sourceUrl, type] = line.split('\t');
  const request = Request.fromRawDetails({ url, sourceUrl, type: types[type] ?? type });
  const { match, exception, filter } = engine.match(request);
  if (match) out.push(`block\t${filter.rawLine}`);
  else if (exception) out.push(`allow\t${exception.rawLine}`);
  else out.push('allow');
}
process.stdout.write(out.join('\n') + '\n');
