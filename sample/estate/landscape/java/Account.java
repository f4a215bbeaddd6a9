package com.korvane.ledger;
public class Account {
    private String [!accountNo:String];
    protected long [!balanceCents:long];
    protected double [!interestRate:double];
    public void credit(long [!cents:long]) {
        [balanceCents] = [balanceCents] + [cents];
    }
    public void debit(long [!cents:long]) {
        [balanceCents] = [balanceCents] - [cents];
    }
    public static Account find(String [!number:String]) {
        Account [!found:Account] = new Account();
        [found.accountNo] = [number];
        return [found];
    }
    public Statement statement() {
        Statement [!current:Statement] = new Statement();
        [current].[>print]();  //@ calls Statement.print
        return [current];
    }
    public static class Statement {
        private int [!period:int];
        private Line [!first:Line];
        public void print() {
            long [!sum:long] = [first].[>total]([&period]);  //@ calls Line.total
            System.out.println([sum]);
        }
        static class Line {
            private long [!amount:long];
            private Line [!next:Line];
            long total(int [!depth:int]) {
                if ([next] == null) {
                    return [amount];
                }
                return [amount] + [next].[>total]([&depth]);  //@ calls Line.total
            }
        }
    }
}
class InterestRule {
    protected double [!rate:double] = 0.02;
    long apply(long [!balance:long]) {
        long [!interest:long] = Math.round([balance] * [rate]);
        return [interest];
    }
}
